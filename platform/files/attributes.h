#pragma once

#include "platform/base/date.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// The target of a path, symbolic links followed. `file` is anything that isn't a folder.
enum class Kind { missing, file, folder };

/// Returns the kind of the target of `path`; `missing` for a dangling link or an unreadable parent too.
Kind kindOf(const Disk& disk, std::string_view path);

/// The type of an entry itself, symbolic links not followed.
enum class EntryType { file, folder, link, other };

struct Attributes {
    EntryType type = EntryType::other;
    std::int64_t sizeBytes = 0; ///< the length of a file, or of a link's target path; otherwise 0
    Date modified;
};

/// Returns the attributes of the entry itself (symbolic links aren't followed), or nullopt when they can't be
/// read.
std::optional<Attributes> attributesOf(const Disk& disk, std::string_view path);

} // namespace platform
