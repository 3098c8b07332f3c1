#include "core/removal/deletion.h"

#include "core/removal/deletion_guard.h"

#include "platform/files/path.h"
#include "platform/removal/remove.h"
#include "platform/removal/trash.h"

#include <string_view>
#include <utility>

namespace core::LumvaleScanner {

namespace {

constexpr std::string_view refusalDomain = "Lumvale";

platform::Error refusal() {
    return {std::string(refusalDomain), 1, "Chemin protégé : Lumvale refuse de le supprimer.", nullptr};
}

/// Moves the entry at `path` to the Trash. The place that the guard judges is the one that is moved, even if
/// another process changes a folder of the path in between.
platform::Result<void> moveToTrash(const platform::Disk& disk, const PlaceGuard& guard,
                                   const std::string& path) {
    const platform::Result<platform::Place> place = disk.place(path);
    if (!place)
        return platform::fileError(platform::FileAction::move, place.error(), platform::lastComponent(path));
    if (!guard.allows(path, *place))
        return refusal();
    const platform::Result<std::string> moved = platform::moveToTrash(disk, *place);
    return moved ? platform::Result<void>() : moved.error();
}

} // namespace

DeletionOutcome deletePaths(const std::vector<std::string>& paths, const platform::Disk& disk) {
    const std::string trash = platform::trashFolder(disk);
    const PlaceGuard guard(disk);
    DeletionOutcome outcome;
    for (const std::string& given : paths) {
        std::string path = platform::standardized(given);
        const platform::Result<void> deleted = [&]() -> platform::Result<void> {
            if (!isDeletionAllowed(path, disk))
                return refusal();
            // Removal from the Trash follows no link at all.
            return platform::isBelow(path, trash) ? platform::removeForGood(disk, path)
                                                  : moveToTrash(disk, guard, path);
        }();
        if (deleted)
            outcome.succeeded.push_back(std::move(path));
        else
            outcome.failed.push_back(
                {deleted.error().domain == refusalDomain ? given : path, deleted.error()});
    }
    return outcome;
}

} // namespace core::LumvaleScanner
