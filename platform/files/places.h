#pragma once

#include "platform/files/disk.h"

#include <string>

namespace platform {

/// Returns the path of "Library/Application Support" in the disk's home, where programs keep their own files.
std::string applicationSupportFolder(const Disk& disk);

} // namespace platform
