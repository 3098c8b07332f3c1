#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

struct VolumeCapacity {
    std::int64_t availableBytes = 0; ///< to this user; includes purgeable space where the system reports it
    std::int64_t totalBytes = 0;
};

/// Returns the capacity of the volume that contains the folder at `path`, or nullopt when the system doesn't
/// report it.
std::optional<VolumeCapacity> volumeCapacity(const Disk& disk, std::string_view path);

} // namespace platform
