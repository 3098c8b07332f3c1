#pragma once

#include "platform/files/disk.h"

#include <string>
#include <string_view>

namespace platform {

/// Returns the path on the disk of the home's folder for the programs' own files: "Library/Application
/// Support" in the home.
std::string applicationSupportFolder(const Disk& disk);

/// Returns the name that the system shows for the entry at `path`, which is its last name on systems without
/// localized names.
std::string displayName(std::string_view path);

} // namespace platform
