#include "platform/system.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>

namespace platform::system {

Descriptor openToPassThrough(int folder, const char* name) {
    return Descriptor(openat(folder, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

int renameExclusively(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    return renameat2(fromFolder, fromName, toFolder, toName, RENAME_NOREPLACE);
}

int clearImmutableFlag(int descriptor) {
    int flags = 0;
    if (ioctl(descriptor, FS_IOC_GETFLAGS, &flags) != 0)
        return -1;
    if ((flags & FS_IMMUTABLE_FL) == 0)
        return 0;
    flags &= ~FS_IMMUTABLE_FL;
    return ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
}

} // namespace platform::system
