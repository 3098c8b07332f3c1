#include "platform/system/system.h"

#include <fcntl.h>
#include <sys/stat.h>

// The functions of system.h that are the same on every system.

namespace platform::system {

EntryType entryType(mode_t mode) {
    switch (mode & S_IFMT) {
    case S_IFDIR:
        return EntryType::folder;
    case S_IFREG:
        return EntryType::file;
    case S_IFLNK:
        return EntryType::link;
    default:
        return EntryType::other;
    }
}

std::optional<Attributes> attributesAt(int folder, const char* name) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return std::nullopt;
    const EntryType type = entryType(status.st_mode);
    const bool hasSize = type == EntryType::file || type == EntryType::link;
    return Attributes{type, hasSize ? std::int64_t{status.st_size} : 0, date(modificationTime(status))};
}

} // namespace platform::system
