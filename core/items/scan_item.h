#pragma once

#include "core/items/scan_category.h"
#include "platform/base/date.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace core {

/// One file or folder proposed for cleanup.
class ScanItem {
public:
    /// Fills in the name, and unticks caches that are better left alone whatever `safeByDefault` asks.
    ScanItem(std::string path, std::int64_t sizeBytes, ScanCategory category, std::string_view explanation,
             bool safeByDefault, std::optional<platform::Date> modifiedDate);

    /// The name that people know a path's last name by; the name itself where the table has none.
    static std::string friendlyName(std::string_view component);

    std::string id;   ///< always the path
    std::string path; ///< absolute path of the disk, as bytes
    std::string name; ///< friendly name, as bytes
    std::int64_t sizeBytes;
    ScanCategory category;
    std::string explanation; ///< translation key, "exp_…": what it is and why it may go
    bool safeByDefault;      ///< whether it starts ticked
    std::optional<platform::Date> modifiedDate;

    bool operator==(const ScanItem&) const = default;
};

/// When the entry at `path` was last changed, a link itself included; absent when that cannot be read.
std::optional<platform::Date> fileModifiedDate(const platform::Disk& disk, std::string_view path);

} // namespace core
