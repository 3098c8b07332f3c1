#include "platform/system/volume.h"

#include "platform/macos/core_foundation.h"
#include "platform/system/system.h"

#include <algorithm>

namespace platform {

namespace {

/// Returns a number of bytes that the system reports about the volume, or 0.
std::int64_t bytes(const std::string& hostPath, CFStringRef key) {
    const Owned<CFTypeRef> number = resourceProperty(hostPath, key);
    std::int64_t value = 0;
    if (number)
        CFNumberGetValue(static_cast<CFNumberRef>(number.get()), kCFNumberSInt64Type, &value);
    return value;
}

} // namespace

std::optional<VolumeCapacity> volumeCapacity(const Disk& disk, std::string_view path) {
    const Result<Descriptor> folder = disk.openFolder(path);
    const std::string hostPath = folder ? system::hostPath(folder->number()) : std::string();
    const std::int64_t total = hostPath.empty() ? 0 : bytes(hostPath, kCFURLVolumeTotalCapacityKey);
    if (total <= 0)
        return std::nullopt;
    // Includes purgeable space, but is 0 for volumes other than the system's.
    const std::int64_t important = bytes(hostPath, kCFURLVolumeAvailableCapacityForImportantUsageKey);
    return VolumeCapacity{std::max(important, bytes(hostPath, kCFURLVolumeAvailableCapacityKey)), total};
}

} // namespace platform
