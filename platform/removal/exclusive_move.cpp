#include "platform/removal/exclusive_move.h"

#include "platform/system/system.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

// Moves for file systems without exclusive renames. They return 0, or -1 with errno.

/// Reserves the new name with an empty folder, which POSIX lets a renamed folder replace. A folder that
/// another process fills in between makes the rename fail.
int moveFolderOntoReservedName(const Place& source, int folder, const char* newName) {
    if (mkdirat(folder, newName, 0700) != 0)
        return -1;
    if (renameat(source.folder.number(), source.name.c_str(), folder, newName) == 0)
        return 0;
    const int failure = errno;
    unlinkat(folder, newName, AT_REMOVEDIR);
    errno = failure;
    return -1;
}

/// Removes the source's name if it still refers to the file called `otherName` in the folder.
int removeFirstName(const Place& source, int folder, const char* otherName) {
    const auto first = system::identityAt(source.folder.number(), source.name.c_str());
    const auto other = system::identityAt(folder, otherName);
    if (!first || !other)
        return -1;
    if (first != other) {
        errno = EBUSY; // another process has replaced the file
        return -1;
    }
    return unlinkat(source.folder.number(), source.name.c_str(), 0);
}

/// Links the file under its new name, then removes the old one. link() never replaces an entry.
int moveFileByLink(const Place& source, int folder, const char* newName) {
    const auto file = system::identityAt(source.folder.number(), source.name.c_str());
    if (!file || linkat(source.folder.number(), source.name.c_str(), folder, newName, 0) != 0)
        return -1;
    if (removeFirstName(source, folder, newName) == 0)
        return 0;
    const int failure = errno;
    // Another process can have saved its own file under the new name.
    const auto linked = system::identityAt(folder, newName);
    if (linked == file)
        unlinkat(folder, newName, 0);
    errno = linked && linked != file ? EEXIST : failure;
    return -1;
}

int moveByReservedName(const Place& source, int folder, const char* newName) {
    struct stat status {};
    if (fstatat(source.folder.number(), source.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return -1;
    if (S_ISDIR(status.st_mode))
        return moveFolderOntoReservedName(source, folder, newName);
    if (S_ISREG(status.st_mode))
        return moveFileByLink(source, folder, newName);
    errno = ENOTSUP;
    return -1;
}

} // namespace

int moveExclusively(const Place& source, int folder, const char* newName) {
    const int result =
        system::renameExclusively(source.folder.number(), source.name.c_str(), folder, newName);
    return result != 0 && (errno == EINVAL || errno == ENOSYS) ? moveByReservedName(source, folder, newName)
                                                               : result;
}

} // namespace platform
