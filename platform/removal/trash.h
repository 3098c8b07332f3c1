#pragma once

#include "platform/base/progress.h"
#include "platform/files/disk.h"
#include "platform/files/entry_id.h"
#include "platform/removal/system_trash.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The user's Trash. All operations fail when the Trash is a symbolic link: otherwise files elsewhere would
/// count as trash and could be removed.
namespace platform {

/// Returns the path on the disk of the Trash: ".Trash" in the home.
std::string trashFolder(const Disk& disk);

/// Returns the names in the Trash, hidden ones included, in byte order. Fails with a Cocoa error when the
/// Trash is missing or can't be read. Returns some of the names, in any order, soon after `progress`, which
/// may be null, is stopped; counts nothing in it.
Result<std::vector<std::string>> listTrash(const Disk& disk, Progress* progress = nullptr);

/// Returns the place of the entry at `path` (standardized) below the Trash. Symbolic links from the Trash
/// downwards aren't followed. Errors are of the POSIX domain: EINVAL for a path that isn't below the Trash.
Result<Place> placeInTrash(const Disk& disk, std::string_view path);

/// An entry that was moved to the Trash.
struct TrashEntry {
    std::string name;          ///< in the Trash
    std::optional<EntryId> id; ///< right after the move; absent unless the entry was found in the Trash
};

/// Moves the entry at `source` into the Trash: by the system's service on this user's own disk, otherwise by
/// a rename. Never overwrites: if the name is taken, the entry gets another name with the same extension.
/// Creates a missing Trash with mode 0700. Fails with a Cocoa error (as for `FileAction::move`), with EXDEV
/// for an entry on another volume; the entry is unchanged then. Fails with EBUSY when another process
/// replaces the entry before the service moves it: the other entry may be in the Trash then.
Result<TrashEntry> moveToTrash(const Disk& disk, const Place& source);

/// Does the same by the given service; by a rename when it is empty.
Result<TrashEntry> moveToTrash(const Disk& disk, const Place& source, const TrashService& service);

/// Moves an entry of the Trash to `target` by renames that never replace another entry: first to a free name
/// in the Trash, so that no process that knows the old name can replace the entry after the check of its ID.
/// An entry that fails the check gets its name back. Errors are of the POSIX domain, and the entry is
/// unchanged then: ENOENT when the Trash has no such entry, or another one of its name; EEXIST when the
/// target's name is taken; ESTALE when its folder has been removed. The entry keeps the free name if the
/// rename to its own fails, too, or the process ends between the renames. If another process moves the
/// target's folder, the entry moves along with it.
Result<void> putBack(const Disk& disk, const TrashEntry& entry, const Place& target);

/// Returns the `number`th candidate name for an entry called `name`: "a 2.txt" for "a.txt". The stem is
/// truncated at a character boundary so that the name has at most 255 bytes.
std::string numberedName(std::string_view name, unsigned number);

} // namespace platform
