#pragma once

#include "platform/disk.h"

#include <string>
#include <string_view>

namespace platform {

/// The Trash of the disk's user: ".Trash" in the home, as a path of the disk.
std::string trashFolder(const Disk& disk);

/// Moves the entry at `path` into the Trash in one rename, which overwrites nothing: where the name is taken
/// it gets another that keeps its extension. Gives the path that it has there. A missing Trash is made, with
/// mode 0700; one that is a link or no folder is an error. An entry on another volume is refused (EXDEV).
/// After an error (Cocoa, as for `FileAction::move`) the entry is where it was, whole.
Result<std::string> moveToTrash(const Disk& disk, std::string_view path);

} // namespace platform
