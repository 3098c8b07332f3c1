#pragma once

#include <string>
#include <vector>

namespace platform {

struct MountPoint {
    std::string folder;   ///< path of the host
    bool isLocal = false; ///< neither on a server nor one of the kernel's own file systems, such as /proc
};

/// Returns the mount points of this machine, or none if the system doesn't list them.
std::vector<MountPoint> mountPoints();

} // namespace platform
