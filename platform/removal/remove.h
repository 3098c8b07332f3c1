#pragma once

#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <string_view>

/// Operations on entries of the Trash. Both refuse any other path.
namespace platform {

/// Permanently removes the entry at `path` (standardized, below the Trash); a folder with everything below
/// it.
///
/// Symbolic links are never followed, even if another process replaces entries at the same time: every folder
/// is opened relative to its open parent, and a parent that had to be closed is reopened as ".." and its
/// identity checked. Mount points, including those of folders of the same volume, aren't entered. A tree of
/// any depth needs at most 128 descriptors.
///
/// If something can't be removed, everything else still is, and the result is a Cocoa error (as for
/// `FileAction::remove`) with the first cause.
///
/// Counts removed entries in `progress`, which may be null. When that is stopped, fails soon after, with the
/// entry removed in part.
Result<void> removeForGood(const Disk& disk, std::string_view path, Progress* progress = nullptr);

/// Clears the user's immutable flag of the entry at `path` (standardized, below the Trash) and of everything
/// below it on its volume, hidden entries included. Ignores failures. Changes no other flag or mode. Ends
/// soon after `progress`, which may be null, is stopped, and counts nothing in it.
void unlock(const Disk& disk, std::string_view path, const Progress* progress = nullptr);

} // namespace platform
