#pragma once

#include "platform/files/disk.h"

namespace platform {

/// Moves the entry at `source` to the name `newName` in the open folder `folder` of the same volume, without
/// ever replacing another entry. Returns 0, or -1 with errno: EEXIST when the name is taken. The entry is
/// unchanged then.
///
/// Without exclusive renames of the file system, folders and files are moved in two steps; other entries fail
/// with ENOTSUP. A file is linked under the new name and loses the old one: after a failure of the second
/// step, and of the attempt to undo the first, it has both names. POSIX can't remove a name only if it refers
/// to a certain file: a file that another process saves under a name between its check and its removal is
/// lost.
int moveExclusively(const Place& source, int folder, const char* newName);

} // namespace platform
