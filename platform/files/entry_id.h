#pragma once

#include "platform/files/attributes.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace platform {

/// Identifies a file or folder on all mounted volumes, whatever its path. Two paths with different letter
/// case can lead to the same entry, because a Mac's volumes usually ignore case. An entry keeps its ID when
/// it is renamed on its volume.
struct EntryId {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;

    // A file system may give the inode of a removed entry to a new one.
    EntryType type = EntryType::other;
    std::int64_t created = 0; ///< nanoseconds since 1970; 0 where the file system doesn't report it

    bool operator==(const EntryId&) const = default;
};

/// Returns the ID of the entry at `place`, or nullopt when it is missing or can't be examined.
std::optional<EntryId> entryId(const Place& place);

/// Returns the ID of the folder that contains the entry at `place`, or nullopt when it can't be examined.
std::optional<EntryId> folderId(const Place& place);

/// Returns the IDs of all folders that contain the entry at `place`, innermost first, the disk's root last.
/// Fails with an error of the POSIX domain: EXDEV when the folder isn't below the root.
Result<std::vector<EntryId>> foldersAbove(const Disk& disk, const Place& place);

} // namespace platform
