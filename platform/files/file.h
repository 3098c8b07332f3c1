#pragma once

#include "platform/files/disk.h"

#include <cstddef>
#include <string>
#include <string_view>

/// Small files, read and written whole. Links above the last name are followed inside the disk.
namespace platform {

/// The whole content of the regular file at `path`, a link to one included. Fails with a Cocoa error; EFBIG
/// when it is longer than `limit`, of which no more is read. Never blocks on a pipe or a device.
Result<std::string> readFile(const Disk& disk, std::string_view path, std::size_t limit);

/// Replaces the content of the regular file at `path` by `content` in place, or makes the file; its folder
/// and that folder's parents are made where they are missing. Anything else at `path`, a link included, is
/// left alone and an error (Cocoa).
Result<void> writeFile(const Disk& disk, std::string_view path, std::string_view content);

} // namespace platform
