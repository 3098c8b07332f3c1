#pragma once

#include "platform/base/progress.h"
#include "platform/files/disk.h"
#include "platform/removal/system_trash.h"

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

/// Returns the place of the entry at `path` (standardised) below the Trash. Symbolic links from the Trash
/// downwards aren't followed. Errors are of the POSIX domain: EINVAL for a path that isn't below the Trash.
Result<Place> placeInTrash(const Disk& disk, std::string_view path);

/// Moves the entry at `source` into the Trash and returns its new path: by the system's service on this
/// user's own disk, otherwise by a rename. Never overwrites: if the name is taken, the entry gets another
/// name with the same extension. Creates a missing Trash with mode 0700. Fails with a Cocoa error (as for
/// `FileAction::move`), with EXDEV for an entry on another volume; the entry is unchanged then. Fails with
/// EBUSY when another process replaces the entry before the service moves it: the other entry may be in the
/// Trash then.
Result<std::string> moveToTrash(const Disk& disk, const Place& source);

/// Does the same by the given service; by a rename when it is empty.
Result<std::string> moveToTrash(const Disk& disk, const Place& source, const TrashService& service);

/// Returns the `number`th candidate name for an entry called `name`: "a 2.txt" for "a.txt". The stem is
/// truncated at a character boundary so that the name has at most 255 bytes.
std::string numberedName(std::string_view name, unsigned number);

} // namespace platform
