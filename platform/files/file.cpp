#include "platform/files/file.h"

#include "platform/files/path.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;

/// Returns the error for an entry that isn't a regular file, otherwise nullopt.
std::optional<Error> refusal(mode_t mode) {
    if (S_ISREG(mode))
        return std::nullopt;
    return posixError(S_ISDIR(mode) ? EISDIR : S_ISLNK(mode) ? ELOOP : EINVAL);
}

std::string_view parent(std::string_view path) {
    const std::size_t slash = path.rfind('/');
    return path.substr(0, std::max<std::size_t>(slash, 1));
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

/// Opens the regular file at this place for writing, and creates it where it is missing. Refuses anything
/// else without opening it.
Result<Descriptor> openToWrite(const Place& place) {
    struct stat status {};
    const int folder = place.folder.number();
    const char* name = place.name.c_str();
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0) {
        if (errno != ENOENT)
            return posixError(errno);
    } else if (std::optional<Error> error = refusal(status.st_mode)) {
        return *std::move(error);
    }
    // The entry may have been replaced since: O_NONBLOCK keeps a pipe from blocking, and the type is checked
    // again.
    Descriptor file(
        openat(folder, name, O_WRONLY | O_CREAT | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC, 0666));
    if (!file || fstat(file.number(), &status) != 0)
        return posixError(errno);
    if (std::optional<Error> error = refusal(status.st_mode))
        return *std::move(error);
    return file;
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

/// Overwrites the content before truncating, so that the file's own blocks are reused on a full volume.
Result<void> writeAll(int file, std::string_view content) {
    for (std::string_view rest = content; !rest.empty();) {
        const ssize_t count = ::write(file, rest.data(), rest.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return posixError(errno);
        rest.remove_prefix(static_cast<std::size_t>(count));
    }
    if (ftruncate(file, static_cast<off_t>(content.size())) != 0)
        return posixError(errno);
    return {};
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
        const Result<Place> place = disk.place(path);
        if (!place)
            return place.error();
        const Result<Descriptor> file = openToWrite(*place);
        if (!file)
            return file.error();
        return writeAll(file->number(), content);
    };
    if (Result<void> written = write(); !written)
        return fileError(FileAction::write, written.error(), lastComponent(path));
    return {};
}

} // namespace platform
