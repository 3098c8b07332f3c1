#include "platform/system/mount_points.h"

#include <cstdio>
#include <string_view>

#include <mntent.h>

namespace platform {

namespace {

/// Local volumes have a path as their source ("/dev/sdb2"), those of FUSE drivers sometimes a name. Servers
/// are written "host:folder" or "//host/folder".
bool isLocal(std::string_view source, std::string_view type) {
    const bool isOfServer = source.find(':') != source.npos || source.starts_with("//");
    return !isOfServer && (source.starts_with('/') || type.starts_with("fuse"));
}

} // namespace

std::vector<MountPoint> mountPoints() {
    std::vector<MountPoint> mounts;
    std::FILE* const table = setmntent("/proc/self/mounts", "r");
    if (table == nullptr)
        return mounts;
    while (const mntent* mount = getmntent(table))
        mounts.push_back({mount->mnt_dir, isLocal(mount->mnt_fsname, mount->mnt_type)});
    endmntent(table);
    return mounts;
}

} // namespace platform
