#pragma once

#include "platform/base/date.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// What a path leads to. Links are followed: one that leads nowhere is missing.
enum class Kind { missing, file, folder };

Kind kindOf(const Disk& disk, std::string_view path);

/// What an entry itself is; of a link, the link.
enum class EntryType { file, folder, link, other };

struct Attributes {
    EntryType type = EntryType::other;
    std::int64_t sizeBytes = 0; ///< of a file its length, of a link its own; otherwise 0
    Date modified;
};

/// The attributes of the entry itself; none when they cannot be read.
std::optional<Attributes> attributesOf(const Disk& disk, std::string_view path);

} // namespace platform
