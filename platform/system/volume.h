#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

struct VolumeCapacity {
    std::int64_t availableBytes = 0; ///< to this user; what could be freed on demand counts where known
    std::int64_t totalBytes = 0;
};

/// The capacity of the volume that holds `path`; none when the system doesn't say.
std::optional<VolumeCapacity> volumeCapacity(const Disk& disk, std::string_view path);

} // namespace platform
