#pragma once

#include "platform/files/disk.h"

#include <string>

namespace platform {

/// Returns true if `disk` is this machine's own and this user runs an application with this bundle
/// identifier, from whatever path. Always false on systems without bundles. Any thread.
bool isApplicationRunning(const Disk& disk, const std::string& bundleIdentifier);

} // namespace platform
