#pragma once

#include "platform/files/disk.h"

#include <string_view>

/// What happens to entries of the Trash, and to nothing else: both operations refuse any other path.
namespace platform {

/// Removes the entry at `path` (standardised, below the Trash) for good, a folder with all that is below it.
/// Nothing is followed, whatever another process swaps meanwhile: every folder is opened by its one name from
/// its own open parent, and an ancestor that had to be closed is reached by ".." and checked to be the same.
/// What is mounted in the folder, a folder of the same volume included, isn't entered: it is no trash. A tree
/// of any depth takes at most 128 descriptors. What can be removed goes even when something else in the
/// folder can't; the error (Cocoa, as for `FileAction::remove`) then names the first true cause.
Result<void> removeForGood(const Disk& disk, std::string_view path);

/// Takes the user's immutable flag off the entry at `path` (standardised, below the Trash) and off everything
/// below it on its volume, hidden entries included; what refuses is passed over. No other flag or mode is
/// changed.
void unlock(const Disk& disk, std::string_view path);

} // namespace platform
