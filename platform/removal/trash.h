#pragma once

#include "platform/files/disk.h"

#include <string>
#include <string_view>
#include <vector>

/// The user's Trash. It must be a real folder: one that is a link would let what lies elsewhere pass for
/// trash, so that everything here fails for it.
namespace platform {

/// The Trash of the disk's user: ".Trash" in the home, as a path of the disk.
std::string trashFolder(const Disk& disk);

/// The names in the Trash, hidden ones included, in the order of their bytes. Fails with a Cocoa error when
/// it is missing or cannot be read.
Result<std::vector<std::string>> listTrash(const Disk& disk);

/// The place of the entry at `path` (standardised) below the Trash. No link is followed from the Trash on: a
/// path that runs through one doesn't lie in the Trash. Errors are of the POSIX domain, EINVAL for a path
/// that isn't below the Trash.
Result<Place> placeInTrash(const Disk& disk, std::string_view path);

/// Moves the entry at `path` into the Trash in one rename, which overwrites nothing: where the name is taken
/// it gets another that keeps its extension. Gives the path that it has there. A missing Trash is made, with
/// mode 0700. An entry on another volume is refused (EXDEV). After an error (Cocoa, as for
/// `FileAction::move`) the entry is where it was, whole.
Result<std::string> moveToTrash(const Disk& disk, std::string_view path);

/// The name to try as the `number`th for an entry called `name`: "a 2.txt" for "a.txt". At most 255 bytes,
/// for which what is before the extension is cut at the end of a character.
std::string numberedName(std::string_view name, unsigned number);

} // namespace platform
