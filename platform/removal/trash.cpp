#include "platform/removal/trash.h"

#include "platform/files/folder_reader.h"
#include "platform/files/path.h"
#include "platform/removal/exclusive_move.h"
#include "platform/removal/system_trash.h"
#include "platform/system/system.h"

#include <algorithm>
#include <cerrno>
#include <optional>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr std::size_t maxNameBytes = 255;

/// Ends the search on a file system that reports every name as taken.
constexpr unsigned maxAttempts = 10000;

/// Opens the Trash to pass through it. Fails when it is a symbolic link.
Result<Descriptor> openTrash(const Disk& disk) {
    const Result<Place> place = disk.place(trashFolder(disk));
    if (!place)
        return place.error();
    Descriptor trash = system::openToPassThrough(place->folder.number(), place->name.c_str());
    if (!trash)
        return posixError(errno);
    return trash;
}

/// Opens the Trash likewise, and creates it where it is missing.
Result<Descriptor> makeTrash(const Disk& disk) {
    Result<Descriptor> trash = openTrash(disk);
    if (trash || trash.error().code != ENOENT)
        return trash;
    const Result<Place> place = disk.place(trashFolder(disk));
    if (!place)
        return place.error();
    if (mkdirat(place->folder.number(), place->name.c_str(), 0700) != 0 && errno != EEXIST)
        return posixError(errno);
    return openTrash(disk);
}

/// Returns `text` truncated to at most `bytes` bytes, at a character boundary if it is UTF-8.
std::string_view truncatedToBytes(std::string_view text, std::size_t bytes) {
    if (text.size() <= bytes)
        return text;
    constexpr std::size_t maxContinuationBytes = 3;
    std::size_t end = bytes;
    const auto isContinuation = [&](std::size_t at) {
        return (text[at] & 0xC0) == 0x80;
    };
    while (end > 0 && bytes - end < maxContinuationBytes && isContinuation(end))
        --end;
    return text.substr(0, isContinuation(end) ? bytes : end);
}

/// Returns the `number`th name to try; the first is the entry's own.
std::string nameInTrash(const std::string& name, unsigned number) {
    return number < 2 ? name : numberedName(name, number);
}

/// Returns a number whose name is probably free, found by binary search so that many entries of one name
/// don't take a linear search. The exclusive rename decides.
unsigned likelyFreeNumber(int trash, const std::string& name) {
    const auto isTaken = [&](unsigned number) {
        struct stat status {};
        return fstatat(trash, nameInTrash(name, number).c_str(), &status, AT_SYMLINK_NOFOLLOW) == 0;
    };
    unsigned taken = 1;
    unsigned free = 2;
    while (free < 1U << 30 && isTaken(free)) {
        taken = free;
        free *= 2;
    }
    while (free - taken > 1) {
        const unsigned middle = taken + (free - taken) / 2;
        (isTaken(middle) ? taken : free) = middle;
    }
    return free;
}

/// Moves the entry to a free name, that of `number` or a later one, and returns that name.
Result<std::string> moveToFreeName(const Place& source, int trash, unsigned number = 1) {
    for (unsigned attempt = 0; attempt < maxAttempts; ++attempt) {
        std::string name = nameInTrash(source.name, number);
        if (moveExclusively(source, trash, name.c_str()) == 0)
            return name;
        if (errno != EEXIST)
            return posixError(errno);
        number = number == 1 ? likelyFreeNumber(trash, source.name) : number + 1;
    }
    return posixError(EEXIST);
}

/// Returns the identity of the Trash, which is created if it is missing. Doesn't open the Trash: a Mac
/// refuses that to a program without full disk access, whose moves the system's service still performs.
Result<system::Identity> identityOfTrash(const Disk& disk) {
    const Result<Place> place = disk.place(trashFolder(disk));
    if (!place)
        return place.error();
    const int home = place->folder.number();
    if (mkdirat(home, place->name.c_str(), 0700) != 0 && errno != EEXIST)
        return posixError(errno);
    const std::optional<Attributes> attributes = system::attributesAt(home, place->name.c_str());
    const std::optional<system::Identity> identity = system::identityAt(home, place->name.c_str());
    if (!attributes || !identity)
        return posixError(errno);
    if (attributes->type != EntryType::folder)
        return posixError(ENOTDIR);
    return *identity;
}

/// Moves the entry to the target if it has this ID. Returns 0 or the host's error number.
int moveChecked(const Place& source, const EntryId& id, const Place& target) {
    if (entryId(source) != id)
        return ENOENT;
    if (moveExclusively(source, target.folder.number(), target.name.c_str()) == 0)
        return 0;
    const int failure = errno;
    // Either name can be missing: the folder of the target was removed if the entry still exists.
    return failure == ENOENT && entryId(source) == id ? ESTALE : failure;
}

Error replaced(const char* description) {
    Error error = posixError(EBUSY);
    error.description = description;
    return error;
}

/// Moves the entry by the system's service, which takes a path: another process can replace the entry until
/// the service has resolved that path. Fails unless the entry at `source` itself was moved. Entries of other
/// volumes, which the service would move to another Trash, and mount points are refused as rename() does.
Result<TrashEntry> moveByService(const Place& source, const system::Identity& trash,
                                 const TrashService& service) {
    const std::optional<system::Identity> folder = system::identityOf(source.folder.number());
    const std::optional<system::Identity> entry =
        system::identityAt(source.folder.number(), source.name.c_str());
    if (!folder || !entry)
        return posixError(errno);
    if (!folder->isOnSameMount(trash))
        return posixError(EXDEV);
    if (!entry->isOnSameMount(*folder))
        return posixError(EBUSY);
    const std::string path = joined(system::hostPath(source.folder.number()), source.name);
    if (system::identityAtHost(path) != entry)
        return replaced("Another process has moved or replaced it");
    const Result<std::string> moved = service(path);
    if (!moved)
        return moved.error();
    // Without full disk access the entry's new place may be unreadable: then its old place decides.
    const std::optional<system::Identity> arrived = system::identityAtHost(*moved);
    if (arrived && arrived != entry)
        return replaced("Another process has replaced it by an entry that is in the Trash now");
    if (system::identityAt(source.folder.number(), source.name.c_str()) == entry)
        return replaced("The system reports a move, but it is still in its place");
    TrashEntry inTrash{std::string(lastComponent(*moved)), std::nullopt};
    if (arrived && system::identityAtHost(std::string(parent(*moved))) == trash)
        inTrash.id = *arrived;
    return inTrash;
}

} // namespace

std::string trashFolder(const Disk& disk) {
    return disk.inHome(".Trash");
}

Result<std::vector<std::string>> listTrash(const Disk& disk, Progress* progress) {
    const auto failed = [progress](const Error& cause) {
        if (progress && isDescriptorShortage(cause))
            progress->addUnreadFolders(1);
        return fileError(FileAction::read, cause, ".Trash");
    };
    const Result<Place> place = disk.place(trashFolder(disk));
    if (!place)
        return failed(place.error());
    const Descriptor trash = system::openFolderBelow(place->folder.number(), place->name.c_str());
    if (!trash)
        return failed(posixError(errno));
    std::vector<std::string> names;
    FolderReader reader;
    reader.start(trash.number());
    while (const FolderEntry* entry = isStopped(progress) ? nullptr : reader.next())
        names.emplace_back(entry->name);
    if (reader.failure() != 0)
        return failed(posixError(reader.failure()));
    if (!isStopped(progress))
        std::sort(names.begin(), names.end());
    return names;
}

Result<Place> placeInTrash(const Disk& disk, std::string_view path) {
    const std::string trash = trashFolder(disk);
    if (!isBelow(path, trash) || path != standardized(path) || path.find('\0') != std::string_view::npos)
        return posixError(EINVAL);
    Result<Descriptor> folder = openTrash(disk);
    if (!folder)
        return folder.error();
    std::string_view rest = path.substr(trash.size() + 1);
    for (std::size_t slash = rest.find('/'); slash != std::string_view::npos; slash = rest.find('/')) {
        Descriptor next =
            system::openToPassThrough(folder->number(), std::string(rest.substr(0, slash)).c_str());
        if (!next)
            return posixError(errno);
        *folder = std::move(next);
        rest.remove_prefix(slash + 1);
    }
    return Place{std::move(*folder), std::string(rest)};
}

Result<TrashEntry> moveToTrash(const Disk& disk, const Place& source) {
    return moveToTrash(disk, source, disk.isOfThisUser() ? systemTrash() : TrashService());
}

Result<TrashEntry> moveToTrash(const Disk& disk, const Place& source, const TrashService& service) {
    const auto move = [&]() -> Result<TrashEntry> {
        if (service) {
            const Result<system::Identity> trash = identityOfTrash(disk);
            return trash ? moveByService(source, *trash, service) : trash.error();
        }
        Result<Descriptor> trash = makeTrash(disk);
        if (!trash)
            return trash.error();
        Result<std::string> name = moveToFreeName(source, trash->number());
        if (!name)
            return name.error();
        const Place moved{std::move(*trash), *std::move(name)};
        return TrashEntry{moved.name, entryId(moved)};
    };
    Result<TrashEntry> moved = move();
    if (!moved && moved.error().domain != cocoaDomain) // the service's own errors are Cocoa's
        return fileError(FileAction::move, moved.error(), source.name);
    return moved;
}

Result<void> putBack(const Disk& disk, const TrashEntry& entry, const Place& target) {
    Result<Descriptor> trash = openTrash(disk);
    if (!trash)
        return trash.error();
    Place source{std::move(*trash), entry.name};
    const std::optional<EntryId> found = entryId(source);
    if (!found && errno != ENOENT)
        return posixError(errno);
    if (!entry.id || found != entry.id)
        return posixError(ENOENT);
    if (entryId(target))
        return posixError(EEXIST);
    const int folder = source.folder.number();
    Result<std::string> newName = moveToFreeName(source, folder, likelyFreeNumber(folder, entry.name));
    if (!newName)
        return newName.error();
    source.name = *std::move(newName);
    const int failure = moveChecked(source, *entry.id, target);
    if (failure == 0)
        return {};
    moveExclusively(source, folder, entry.name.c_str());
    return posixError(failure);
}

std::string numberedName(std::string_view name, unsigned number) {
    const std::string suffix = " " + std::to_string(number);
    const std::string_view nameExtension = extension(name);
    std::string ending = suffix;
    if (!nameExtension.empty())
        ending.append(".").append(nameExtension);
    if (ending.size() >= maxNameBytes) // the extension leaves no room for a stem
        return std::string(truncatedToBytes(name, maxNameBytes - suffix.size())) + suffix;
    return std::string(truncatedToBytes(stem(name), maxNameBytes - ending.size())) + ending;
}

} // namespace platform
