#include "core/removal/put_back.h"

#include "core/removal/deletion_guard.h"

#include <cerrno>

namespace core::LumvaleScanner {

namespace {

platform::Error refusal() {
    return {std::string(refusalDomain), 1, "Lumvale refuses to move entries to this place.", nullptr};
}

/// Moves the entry to its path. The place that the guard judges is the one that is moved to.
platform::Result<void> putBack(const MovedEntry& moved, const platform::Disk& disk, const PlaceGuard& guard) {
    if (!isDeletionAllowed(moved.path, disk))
        return refusal();
    const platform::Result<platform::Place> place = disk.place(moved.path);
    if (!place) {
        const int code = place.error().code;
        return code == ENOENT || code == ENOTDIR ? platform::posixError(ESTALE) : place.error();
    }
    if (!guard.allows(moved.path, *place))
        return refusal();
    // A program may have created its folder again, but a link that is new leads to a folder of others.
    if (place->isThroughLink && (!moved.folder || platform::folderId(*place) != moved.folder))
        return platform::posixError(ESTALE);
    return platform::putBack(disk, moved.inTrash, *place);
}

} // namespace

PutBackOutcome putBack(const std::vector<MovedEntry>& moved, const platform::Disk& disk,
                       platform::Progress* progress) {
    const PlaceGuard guard(disk);
    if (progress)
        progress->beginPhase(static_cast<std::int64_t>(moved.size()));
    PutBackOutcome outcome;
    for (auto entry = moved.rbegin(); entry != moved.rend(); ++entry) {
        if (isStopped(progress)) {
            outcome.left.push_back(entry->path);
            continue;
        }
        if (const platform::Result<void> done = putBack(*entry, disk, guard); done)
            outcome.succeeded.push_back(entry->path);
        else
            outcome.failed.push_back({entry->path, done.error()});
        if (progress)
            progress->add(1, 0);
    }
    return outcome;
}

} // namespace core::LumvaleScanner
