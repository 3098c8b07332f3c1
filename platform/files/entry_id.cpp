#include "platform/files/entry_id.h"

#include "platform/system/system.h"

#include <cerrno>
#include <utility>

namespace platform {

namespace {

std::optional<EntryId> withoutMount(const std::optional<system::Identity>& identity) {
    return identity ? std::optional<EntryId>(*identity) : std::nullopt;
}

} // namespace

std::optional<EntryId> entryId(const Place& place) {
    return withoutMount(system::identityAt(place.folder.number(), place.name.c_str()));
}

std::optional<EntryId> folderId(const Place& place) {
    return withoutMount(system::identityOf(place.folder.number()));
}

Result<std::vector<EntryId>> foldersAbove(const Disk& disk, const Place& place) {
    const Result<Place> root = disk.placeFollowed("/");
    if (!root)
        return root.error();
    const std::optional<EntryId> top = withoutMount(system::identityOf(root->folder.number()));
    std::vector<EntryId> above;
    Descriptor folder = system::openToPassThrough(place.folder.number(), ".");
    for (;;) {
        const auto id = folder ? withoutMount(system::identityOf(folder.number())) : std::nullopt;
        if (!top || !id)
            return posixError(errno);
        // The root of the host is its own parent.
        if (!above.empty() && above.back() == *id)
            return posixError(EXDEV);
        above.push_back(*id);
        if (*id == *top)
            return above;
        folder = system::openToPassThrough(folder.number(), "..");
    }
}

} // namespace platform
