#include "core/removal/deletion.h"

#include "core/removal/deletion_guard.h"

#include "platform/files/path.h"
#include "platform/removal/remove.h"
#include "platform/removal/trash.h"

#include <utility>

namespace core::LumvaleScanner {

namespace {

platform::Error refusal() {
    return {"Lumvale", 1, "Chemin protégé : Lumvale refuse de le supprimer.", nullptr};
}

platform::Result<void> moveToTrash(const platform::Disk& disk, const std::string& path) {
    const platform::Result<std::string> moved = platform::moveToTrash(disk, path);
    return moved ? platform::Result<void>() : moved.error();
}

} // namespace

DeletionOutcome deletePaths(const std::vector<std::string>& paths, const platform::Disk& disk) {
    const std::string trash = platform::trashFolder(disk);
    DeletionOutcome outcome;
    for (const std::string& given : paths) {
        std::string path = platform::standardized(given);
        if (!isDeletionAllowed(path, disk)) {
            outcome.failed.push_back({given, refusal()});
            continue;
        }
        const platform::Result<void> deleted =
            platform::isBelow(path, trash) ? platform::removeForGood(disk, path) : moveToTrash(disk, path);
        if (deleted)
            outcome.succeeded.push_back(std::move(path));
        else
            outcome.failed.push_back({std::move(path), deleted.error()});
    }
    return outcome;
}

} // namespace core::LumvaleScanner
