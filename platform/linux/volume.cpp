#include "platform/system/volume.h"

#include <limits>

#include <sys/statvfs.h>

namespace platform {

namespace {

std::int64_t bytes(fsblkcnt_t blocks, unsigned long blockSize) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(blocks, blockSize, &product))
        return std::numeric_limits<std::int64_t>::max();
    return product;
}

} // namespace

std::optional<VolumeCapacity> volumeCapacity(const Disk& disk, std::string_view path) {
    const Result<Descriptor> folder = disk.openFolder(path);
    struct statvfs status {};
    if (!folder || fstatvfs(folder->number(), &status) != 0)
        return std::nullopt;
    // f_bavail excludes the blocks reserved for root. Linux doesn't report purgeable space.
    return VolumeCapacity{bytes(status.f_bavail, status.f_frsize), bytes(status.f_blocks, status.f_frsize)};
}

} // namespace platform
