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
    /// Derives `id` and `name` from `path`. Sets the member `safeByDefault` to false for caches that are
    /// costly to lose, whatever the argument.
    ScanItem(std::string path, std::int64_t sizeBytes, ScanCategory category, std::string_view explanation,
             bool safeByDefault, std::optional<platform::Date> modifiedDate);

    /// Returns the product name for the last component of a path; the component itself if it is unknown.
    static std::string friendlyName(std::string_view component);

    std::string id;   ///< always the path
    std::string path; ///< absolute path on the disk, as bytes
    std::string name; ///< friendly name, as bytes
    std::int64_t sizeBytes;
    ScanCategory category;
    std::string explanation; ///< translation key, "exp_…": content of the item and reason to delete it
    bool safeByDefault;      ///< selected when the scan ends
    std::optional<platform::Date> modifiedDate;

    bool operator==(const ScanItem&) const = default;
};

/// Returns the modification date of the entry at `path`, of a symbolic link itself rather than its target;
/// nothing if it cannot be read.
std::optional<platform::Date> fileModifiedDate(const platform::Disk& disk, std::string_view path);

} // namespace core
