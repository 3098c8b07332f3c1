#pragma once

#include "platform/files/disk.h"

#include <string>
#include <string_view>

namespace platform {

/// The folder of the user's home in which programs keep their own files, as a path of the disk.
std::string applicationSupportFolder(const Disk& disk);

/// The name under which the system shows the entry at `path`: its own, where the system has no other.
std::string displayName(std::string_view path);

} // namespace platform
