#pragma once

#include "platform/files/disk.h"

#include <functional>

namespace platform {

/// The program's permission to use the photo library.
enum class PhotoAuthorization { notDetermined, restricted, denied, authorized, limited };

/// Reads and requests the permission to use the photo library of a disk. Any thread.
struct PhotoAccess {
    std::function<PhotoAuthorization(const Disk&)> status; ///< returns the permission without asking the user
    std::function<PhotoAuthorization(const Disk&)> request; ///< asks if it is not determined; blocks

    /// Returns this system's implementation. A system that doesn't ask the user grants access, once it was
    /// requested, to every library that can be read; the request is recorded in the user's configuration.
    static PhotoAccess ofSystem();
};

} // namespace platform
