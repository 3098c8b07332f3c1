#pragma once

#include "platform/files/disk.h"

#include <functional>

namespace platform {

/// The program's permission to use the photo library.
enum class PhotoAuthorization { notDetermined, restricted, denied, authorized, limited };

/// Reads and requests the permission to use the photo catalogue of a disk. Any thread.
struct PhotoAccess {
    std::function<PhotoAuthorization(const Disk&)> status; ///< returns the permission without asking the user
    std::function<PhotoAuthorization(const Disk&)> request; ///< asks if it is not determined; blocks

    /// Grants access, once it was requested, to every catalogue that can be read. The request is recorded in
    /// the user's configuration.
    static PhotoAccess ofCatalogue();
};

} // namespace platform
