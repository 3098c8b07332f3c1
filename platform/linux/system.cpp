#include "platform/system/system.h"

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/openat2.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace platform::system {

namespace {

std::optional<Identity> identity(int folder, const char* name, int flags) {
    constexpr unsigned requested = STATX_TYPE | STATX_INO | STATX_BTIME | STATX_MNT_ID;
    struct statx status {};
    if (statx(folder, name, flags | AT_SYMLINK_NOFOLLOW, requested, &status) != 0)
        return std::nullopt;
    const bool hasMount = (status.stx_mask & STATX_MNT_ID) != 0; // since Linux 5.8
    const bool hasCreation = (status.stx_mask & STATX_BTIME) != 0;
    return Identity{{makedev(status.stx_dev_major, status.stx_dev_minor), status.stx_ino,
                     entryType(status.stx_mode),
                     hasCreation ? status.stx_btime.tv_sec * 1'000'000'000 + status.stx_btime.tv_nsec : 0},
                    hasMount ? status.stx_mnt_id : 0};
}

} // namespace

Descriptor openToPassThrough(int folder, const char* name) {
    return Descriptor(openat(folder, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor openFolderBelow(int folder, const char* path) {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    const char* slash = std::strchr(path, '/');
    if (!slash)
        return Descriptor(openat(folder, path, flags));

    // O_NOFOLLOW applies to the last name only. openat2() covers all names, but Linux before 5.6 and some
    // containers lack it.
    static std::atomic<bool> hasOpenBeneath = true;
    if (hasOpenBeneath.load(std::memory_order_relaxed)) {
        open_how how{};
        how.flags = flags;
        how.resolve = RESOLVE_BENEATH | RESOLVE_NO_SYMLINKS;
        const long number = syscall(SYS_openat2, folder, path, &how, sizeof how);
        if (number >= 0 || (errno != ENOSYS && errno != EPERM))
            return Descriptor(static_cast<int>(number));
        hasOpenBeneath = false;
    }
    Descriptor passed;
    for (; slash; slash = std::strchr(path, '/')) {
        passed = openToPassThrough(passed ? passed.number() : folder, std::string(path, slash).c_str());
        if (!passed)
            return {};
        path = slash + 1;
    }
    return Descriptor(openat(passed.number(), path, flags));
}

std::optional<Identity> identityOf(int descriptor) {
    return identity(descriptor, "", AT_EMPTY_PATH);
}

std::optional<Identity> identityAt(int folder, const char* name) {
    return identity(folder, name, 0);
}

std::optional<Identity> identityAtHost(const std::string& path) {
    return path.empty() ? std::nullopt : identity(AT_FDCWD, path.c_str(), 0);
}

std::string hostPath(int descriptor) {
    char target[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(descriptor);
    const ssize_t length = readlink(link.c_str(), target, sizeof target);
    return length <= 0 || length == ssize_t{sizeof target}
               ? std::string()
               : std::string(target, static_cast<std::size_t>(length));
}

timespec modificationTime(const struct stat& status) {
    return status.st_mtim;
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

int inheritStandardOutput(posix_spawnattr_t&, posix_spawn_file_actions_t& actions) {
    return posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
}

std::optional<std::string> userCacheFolder() {
    return std::nullopt;
}

} // namespace platform::system
