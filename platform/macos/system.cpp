#include "platform/system/system.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace platform::system {

namespace {

/// Returns nullopt for a file system without inode numbers, on which all entries would look the same. A
/// volume is mounted only once, so that the device identifies the mount point.
std::optional<Identity> identity(const struct stat& status) {
    if (status.st_ino == 0) {
        errno = ENOTSUP;
        return std::nullopt;
    }
    const timespec& created = status.st_birthtimespec;
    return Identity{{static_cast<std::uint64_t>(status.st_dev), status.st_ino, entryType(status.st_mode),
                     std::int64_t{created.tv_sec} * 1'000'000'000 + created.tv_nsec},
                    0};
}

} // namespace

Descriptor openToPassThrough(int folder, const char* name) {
    return Descriptor(openat(folder, name, O_SEARCH | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor openFolderBelow(int folder, const char* path) {
    return Descriptor(openat(folder, path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW_ANY | O_CLOEXEC));
}

std::optional<Identity> identityOf(int descriptor) {
    struct stat status {};
    return fstat(descriptor, &status) == 0 ? identity(status) : std::nullopt;
}

std::optional<Identity> identityAt(int folder, const char* name) {
    struct stat status {};
    return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 ? identity(status) : std::nullopt;
}

std::optional<Identity> identityAtHost(const std::string& path) {
    return identityAt(AT_FDCWD, path.c_str());
}

std::string hostPath(int descriptor) {
    char path[PATH_MAX];
    return fcntl(descriptor, F_GETPATH, path) == 0 ? path : std::string();
}

timespec modificationTime(const struct stat& status) {
    return status.st_mtimespec;
}

int renameExclusively(int fromFolder, const char* fromName, int toFolder, const char* toName) {
    const int result = renameatx_np(fromFolder, fromName, toFolder, toName, RENAME_EXCL);
    if (result != 0 && errno == ENOTSUP)
        errno = EINVAL;
    return result;
}

int clearImmutableFlag(int descriptor) {
    struct stat status {};
    if (fstat(descriptor, &status) != 0)
        return -1;
    if ((status.st_flags & UF_IMMUTABLE) == 0)
        return 0;
    return fchflags(descriptor, status.st_flags & ~static_cast<unsigned>(UF_IMMUTABLE));
}

int inheritStandardOutput(posix_spawnattr_t& attributes, posix_spawn_file_actions_t& actions) {
    short flags = 0;
    posix_spawnattr_getflags(&attributes, &flags);
    posix_spawnattr_setflags(&attributes, static_cast<short>(flags | POSIX_SPAWN_CLOEXEC_DEFAULT));
    const int error = posix_spawn_file_actions_addinherit_np(&actions, STDOUT_FILENO);
    return error != 0 ? error : posix_spawn_file_actions_addinherit_np(&actions, STDERR_FILENO);
}

std::optional<std::string> userCacheFolder() {
    char path[PATH_MAX];
    const std::size_t size = confstr(_CS_DARWIN_USER_CACHE_DIR, path, sizeof path);
    char resolved[PATH_MAX];
    if (size == 0 || size > sizeof path || realpath(path, resolved) == nullptr)
        return std::nullopt;
    return resolved;
}

} // namespace platform::system
