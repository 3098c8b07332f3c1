#include "core/removal/deletion.h"

#include "core/removal/deletion_guard.h"
#include "platform/files/path.h"
#include "platform/removal/remove.h"
#include "platform/removal/trash.h"
#include "platform/walk/walk.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <utility>

namespace core::LumvaleScanner {

namespace {

platform::Error refusal() {
    return {std::string(refusalDomain), 1, "Chemin protégé : Lumvale refuse de le supprimer.", nullptr};
}

/// Moves the entry at `path` to the Trash. The place that the guard judges is the one that is moved, even if
/// another process changes a folder of the path in between.
platform::Result<MovedEntry> moveToTrash(const platform::Disk& disk, const PlaceGuard& guard,
                                         const std::string& path) {
    const platform::Result<platform::Place> place = disk.place(path);
    if (!place)
        return platform::fileError(platform::FileAction::move, place.error(), platform::lastComponent(path));
    if (!guard.allows(path, *place))
        return refusal();
    platform::Result<platform::TrashEntry> moved = platform::moveToTrash(disk, *place);
    if (!moved)
        return moved.error();
    return MovedEntry{path, *std::move(moved), platform::folderId(*place)};
}

/// Returns the sizes of the paths in the Trash, which are removed entry by entry, and begins the phase of the
/// removal with the number of entries. Returns nothing without a progress.
std::map<std::string, std::int64_t> measuredInTrash(const std::vector<std::string>& paths,
                                                    const platform::Disk& disk,
                                                    platform::Progress* progress) {
    if (!progress)
        return {};
    std::vector<std::string> inTrash;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(inTrash),
                 [trash = platform::trashFolder(disk)](const std::string& path) {
                     return platform::isBelow(path, trash);
                 });
    const std::vector<std::int64_t> sizes =
        platform::measure(disk, inTrash, progress, platform::Hidden::include);
    progress->beginPhase(progress->entries() + static_cast<std::int64_t>(paths.size() - inTrash.size()));
    std::map<std::string, std::int64_t> sizesByPath;
    for (std::size_t i = 0; i < inTrash.size(); ++i)
        sizesByPath[inTrash[i]] = sizes[i];
    return sizesByPath;
}

} // namespace

DeletionOutcome deletePaths(const std::vector<std::string>& given, const platform::Disk& disk,
                            platform::Progress* progress) {
    const std::string trash = platform::trashFolder(disk);
    const PlaceGuard guard(disk);
    std::vector<std::string> paths;
    paths.reserve(given.size());
    for (const std::string& path : given)
        paths.push_back(platform::standardized(path));
    const std::map<std::string, std::int64_t> sizesInTrash = measuredInTrash(paths, disk, progress);

    DeletionOutcome outcome;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        const std::string& path = paths[i];
        if (isStopped(progress)) {
            outcome.left.insert(outcome.left.end(), paths.begin() + static_cast<std::ptrdiff_t>(i),
                                paths.end());
            break;
        }
        const bool isInTrash = platform::isBelow(path, trash);
        const platform::Result<void> deleted = [&]() -> platform::Result<void> {
            if (!isDeletionAllowed(path, disk))
                return refusal();
            if (isInTrash) // removal follows no link at all
                return platform::removeForGood(disk, path, progress);
            platform::Result<MovedEntry> moved = moveToTrash(disk, guard, path);
            if (!moved)
                return moved.error();
            if (moved->inTrash.id)
                outcome.moved.push_back(*std::move(moved));
            return {};
        }();
        if (deleted) {
            outcome.succeeded.push_back(path);
            if (progress && !isInTrash)
                progress->add(1, 0);
        } else if (isInTrash && isStopped(progress)) {
            outcome.partial = partialRemoval(disk, path, sizesInTrash.at(path));
            outcome.left.push_back(path);
        } else {
            outcome.failed.push_back({isRefusal(deleted.error()) ? given[i] : path, deleted.error()});
        }
    }
    return outcome;
}

bool isRefusal(const platform::Error& error) {
    return error.domain == refusalDomain;
}

} // namespace core::LumvaleScanner
