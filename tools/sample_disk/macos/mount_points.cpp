#include "tools/sample_disk/mount_points.h"

#include <sys/mount.h>

namespace sample_disk {

std::vector<std::string> mountPoints() {
    std::vector<std::string> folders;
    struct statfs* mounts = nullptr; // owned by the system
    const int count = getmntinfo(&mounts, MNT_NOWAIT);
    for (int i = 0; i < count; ++i)
        folders.emplace_back(mounts[i].f_mntonname);
    return folders;
}

} // namespace sample_disk
