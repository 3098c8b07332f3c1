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

/// Overwrites the regular file at `path` with `content` in place (not atomically), or creates it together
/// with missing parent folders. Fails with a Cocoa error, and leaves anything else at `path`, including a
/// symbolic link, unchanged.
Result<void> writeFile(const Disk& disk, std::string_view path, std::string_view content);

} // namespace platform
