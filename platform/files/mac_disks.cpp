#include "platform/files/mac_disks.h"

#include "platform/files/attributes.h"
#include "platform/files/entry_id.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/system/mount_points.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <sys/stat.h>

namespace platform {

namespace {

constexpr std::string_view users = "/Users";

/// Returns the folder for temporary caches of the home's owner: /private/var/folders/XX/NAME/C.
std::optional<std::string> userCacheOf(const Disk& disk) {
    const auto owner = [&disk](std::string_view path) -> std::optional<uid_t> {
        struct stat status {};
        const Result<Descriptor> folder = disk.openFolder(path);
        return folder && fstat(folder->number(), &status) == 0 ? std::optional(status.st_uid) : std::nullopt;
    };
    const auto foldersIn = [&disk](const std::string& folder) {
        std::vector<std::string> paths;
        if (const auto names = listFolder(disk, folder))
            for (const std::string& name : *names)
                paths.push_back(joined(folder, name));
        return paths;
    };
    const std::optional<uid_t> user = owner(disk.home());
    for (const std::string& group : foldersIn("/private/var/folders"))
        for (const std::string& folder : foldersIn(group))
            if (std::string caches = joined(folder, "C"); user && owner(caches) == user)
                return caches;
    return std::nullopt;
}

} // namespace

Result<std::vector<std::string>> macHomes(const std::string& hostRoot) {
    const Result<Disk> disk = Disk::open(hostRoot, "/");
    if (!disk)
        return disk.error();
    std::vector<std::string> homes;
    if (const auto names = listFolder(*disk, users, Hidden::skip))
        for (const std::string& name : *names)
            if (std::string home = joined(users, name);
                name != "Shared" && kindOf(*disk, home) == Kind::folder)
                homes.push_back(std::move(home));
    if (homes.empty())
        return posixError(ENOENT);
    return homes;
}

std::vector<MacDisk> mountedMacDisks() {
    std::vector<std::string> roots;
    for (MountPoint& mount : mountPoints())
        if (mount.isLocal)
            roots.push_back(std::move(mount.folder));
    std::sort(roots.begin(), roots.end());
    std::vector<MacDisk> disks;
    std::vector<EntryId> found;
    for (std::string& root : roots) {
        Result<std::vector<std::string>> homes = macHomes(root);
        if (!homes)
            continue;
        const Result<Disk> disk = Disk::open(root, homes->front());
        const Result<Place> place = disk ? disk->place(homes->front()) : Result<Place>(disk.error());
        const std::optional<EntryId> id = place ? entryId(*place) : std::nullopt;
        if (!id || std::find(found.begin(), found.end(), *id) != found.end())
            continue;
        found.push_back(*id);
        disks.push_back({std::move(root), std::move(*homes)});
    }
    return disks;
}

Result<Disk> openMacDisk(const std::string& hostRoot, std::string_view home) {
    const Result<std::vector<std::string>> homes = macHomes(hostRoot);
    if (!homes)
        return homes.error();
    if (home.empty() && homes->size() > 1)
        return posixError(EINVAL);
    std::string path = standardized(home.empty() ? std::string_view(homes->front()) : home);
    if (const std::string root = standardized(hostRoot); isBelow(path, root))
        path.erase(0, root == "/" ? 0 : root.size());
    const Result<Disk> disk = Disk::open(hostRoot, path);
    return disk ? Disk::open(hostRoot, path, userCacheOf(*disk)) : disk;
}

} // namespace platform
