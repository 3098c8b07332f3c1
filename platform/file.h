#pragma once

#include "platform/disk.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace platform {

/// The whole content of the regular file at `path`. EFBIG (in a Cocoa error) when it is longer than `limit`.
Result<std::string> readFile(const Disk& disk, std::string_view path, std::size_t limit);

/// Replaces the content of the regular file at `path` by `content` in place, or makes the file; its folder
/// and that folder's parents are made where they are missing.
Result<void> writeFile(const Disk& disk, std::string_view path, std::string_view content);

} // namespace platform
