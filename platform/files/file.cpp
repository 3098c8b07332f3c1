#include "platform/files/file.h"

#include "platform/files/path.h"

#include <cerrno>
#include <climits>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;
constexpr int maxLinks = 40; // as when a path is resolved

/// Returns the error for an entry that isn't a regular file, otherwise nullopt.
std::optional<Error> refusal(mode_t mode) {
    if (S_ISREG(mode))
        return std::nullopt;
    return posixError(S_ISDIR(mode) ? EISDIR : S_ISLNK(mode) ? ELOOP : EINVAL);
}

/// Creates the folder at `path` and its parents where they are missing.
Result<void> makeFolders(const Disk& disk, std::string_view path) {
    const Result<Descriptor> there = disk.openFolder(path);
    if (there || there.error().code != ENOENT || path.size() <= 1)
        return there ? Result<void>() : there.error();
    if (Result<void> made = makeFolders(disk, parent(path)); !made)
        return made;
    const Result<Place> place = disk.place(path);
    if (!place)
        return place.error();
    // EEXIST: another process has just created it.
    if (mkdirat(place->folder.number(), place->name.c_str(), 0777) != 0 && errno != EEXIST)
        return posixError(errno);
    return {};
}

/// Returns the place of the file at `path`: symbolic links at the last name are followed, and the last target
/// may be missing.
Result<Place> placeToWrite(const Disk& disk, std::string path) {
    for (int links = 0; links <= maxLinks; ++links) {
        Result<Place> place = disk.place(path);
        if (!place)
            return place;
        char target[PATH_MAX];
        const ssize_t length = readlinkat(place->folder.number(), place->name.c_str(), target, sizeof target);
        if (length < 0) // not a link, or missing
            return place;
        const std::string_view text(target, static_cast<std::size_t>(length));
        path =
            text.starts_with('/') ? std::string(text) : std::string(parent(path)) + "/" + std::string(text);
    }
    return posixError(ELOOP);
}

/// Returns the mode of the file at this place, or nullopt when there is none.
Result<std::optional<mode_t>> modeToKeep(const Place& place) {
    struct stat status {};
    if (fstatat(place.folder.number(), place.name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? Result<std::optional<mode_t>>(std::nullopt) : posixError(errno);
    if (std::optional<Error> error = refusal(status.st_mode))
        return *std::move(error);
    return std::optional<mode_t>(status.st_mode & 0777);
}

Result<std::string> readAll(int file, std::size_t limit) {
    std::string content;
    char block[blockSize];
    for (;;) {
        const ssize_t count = ::read(file, block, sizeof block);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixError(errno);
        content.append(block, static_cast<std::size_t>(count));
        if (content.size() > limit)
            return posixError(EFBIG);
        if (count == 0)
            return content;
    }
}

Result<void> writeAll(int file, std::string_view content) {
    while (!content.empty()) {
        const ssize_t count = ::write(file, content.data(), content.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixError(errno);
        content.remove_prefix(static_cast<std::size_t>(count));
    }
    // The new content must be on the disk before the rename is, or a crash could leave an empty file.
    if (fsync(file) != 0)
        return posixError(errno);
    return {};
}

/// Writes `content` to a new file beside the place and renames it onto the place.
Result<void> replace(const Place& place, std::string_view content) {
    const Result<std::optional<mode_t>> mode = modeToKeep(place);
    if (!mode)
        return mode.error();
    const int folder = place.folder.number();
    // The process ID keeps two running programs apart. A file of this name was left by a crash.
    const std::string temporary = ".lumvale-" + std::to_string(getpid());
    unlinkat(folder, temporary.c_str(), 0);
    const Descriptor file(
        openat(folder, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666));
    if (!file)
        return posixError(errno);
    // open() removes the bits of the umask from the mode.
    Result<void> written = *mode && fchmod(file.number(), **mode) != 0 ? Result<void>(posixError(errno))
                                                                       : writeAll(file.number(), content);
    if (written && renameat(folder, temporary.c_str(), folder, place.name.c_str()) != 0)
        written = posixError(errno);
    if (!written)
        unlinkat(folder, temporary.c_str(), 0);
    return written;
}

} // namespace

Result<std::string> readFile(const Disk& disk, std::string_view path, std::size_t limit) {
    const Result<Descriptor> file = disk.openFile(path);
    if (!file)
        return fileError(FileAction::read, file.error(), lastComponent(path));
    Result<std::string> content = readAll(file->number(), limit);
    if (!content)
        return fileError(FileAction::read, content.error(), lastComponent(path));
    return content;
}

Result<void> writeFile(const Disk& disk, std::string_view path, std::string_view content) {
    const auto write = [&]() -> Result<void> {
        if (Result<void> made = makeFolders(disk, parent(path)); !made)
            return made;
        const Result<Place> place = placeToWrite(disk, std::string(path));
        return place ? replace(*place, content) : Result<void>(place.error());
    };
    if (Result<void> written = write(); !written)
        return fileError(FileAction::write, written.error(), lastComponent(path));
    return {};
}

} // namespace platform
