#pragma once

#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// Treatment of hidden entries: those with a name that begins with "." or with the system's hidden flag.
enum class Hidden { include, skip };

/// Returns the names in the folder at `path`, without "." and "..", in byte order. A symbolic link to a
/// folder is followed. Fails with a Cocoa error when the folder can't be read. Returns some of the names, in
/// any order, soon after `progress`, which may be null, is stopped. Counts nothing in it, except the folder
/// as unread if no descriptors are left.
Result<std::vector<std::string>> listFolder(const Disk& disk, std::string_view path,
                                            Hidden hidden = Hidden::include, Progress* progress = nullptr);

} // namespace platform
