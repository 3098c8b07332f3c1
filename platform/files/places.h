#pragma once

#include "platform/files/disk.h"

#include <string>

namespace platform {

/// Returns the path on the disk of the home's folder for the programs' own files: "Library/Application
/// Support" in the home.
std::string applicationSupportFolder(const Disk& disk);

} // namespace platform
