#pragma once

#include "platform/files/disk.h"

namespace platform {

/// Moves the entry at `source` to the name `newName` in the open folder `folder` of the same volume, without
/// ever replacing another entry. Returns 0, or -1 with errno: EEXIST when the name is taken. The entry is
/// unchanged then. Without exclusive renames of the file system, folders and files are moved in two steps;
/// other entries fail with ENOTSUP.
int moveExclusively(const Place& source, int folder, const char* newName);

} // namespace platform
