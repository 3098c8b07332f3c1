#include "platform/system/mount_points.h"

#include <sys/mount.h>

namespace platform {

std::vector<MountPoint> mountPoints() {
    std::vector<MountPoint> mounts;
    struct statfs* table = nullptr; // owned by the system
    const int count = getmntinfo(&table, MNT_NOWAIT);
    for (int i = 0; i < count; ++i)
        mounts.push_back({table[i].f_mntonname, (table[i].f_flags & MNT_LOCAL) != 0});
    return mounts;
}

} // namespace platform
