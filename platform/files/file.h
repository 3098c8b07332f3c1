#pragma once

#include "platform/files/disk.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Reading and writing of small files as a whole. Symbolic links above the last name are followed within the
/// disk.
namespace platform {

/// Returns the content of the regular file at `path`; a symbolic link to one is followed. Fails with a Cocoa
/// error, whose underlying error is EFBIG when the file is longer than `limit` bytes. Never blocks on a pipe
/// or a device.
Result<std::string> readFile(const Disk& disk, std::string_view path, std::size_t limit);

/// Replaces the content of the regular file at `path`, or creates it together with missing parent folders. A
/// symbolic link is followed within the disk; its target may be missing.
///
/// The content is written to a new file in the same folder, which is renamed when it is on the disk: a crash
/// or a full volume leaves the old content. The file keeps its mode. Fails with a Cocoa error, and leaves
/// anything that isn't a regular file unchanged.
Result<void> writeFile(const Disk& disk, std::string_view path, std::string_view content);

} // namespace platform
