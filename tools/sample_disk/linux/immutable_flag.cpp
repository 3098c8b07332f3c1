#include "tools/sample_disk/immutable_flag.h"

#include <linux/fs.h>
#include <sys/ioctl.h>

namespace sample_disk {

void setImmutable(int descriptor, bool isImmutable) {
    int flags = 0;
    if (ioctl(descriptor, FS_IOC_GETFLAGS, &flags) != 0 || ((flags & FS_IMMUTABLE_FL) != 0) == isImmutable)
        return;
    flags ^= FS_IMMUTABLE_FL;
    ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
}

} // namespace sample_disk
