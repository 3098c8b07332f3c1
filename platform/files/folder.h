#pragma once

#include "platform/files/disk.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Whether hidden entries count: those whose name begins with "." or that the system marks hidden.
enum class Hidden { include, skip };

/// The names in the folder at `path` (a link to a folder is followed), without "." and "..", in the order of
/// their bytes. Fails with a Cocoa error when the folder cannot be read.
Result<std::vector<std::string>> listFolder(const Disk& disk, std::string_view path,
                                            Hidden hidden = Hidden::include);

} // namespace platform
