#include "core/removal/deletion_guard.h"

#include "platform/files/path.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

namespace core::LumvaleScanner {

namespace {

using namespace std::string_view_literals;

// All comparisons of text are exact and case-sensitive.

/// Folders that may not be deleted, nor anything below them.
constexpr std::array systemPlaces{
    "/System"sv,         "/usr"sv,           "/bin"sv,   "/sbin"sv, "/private/etc"sv,
    "/private/var/db"sv, "/Library/Apple"sv, "/cores"sv, "/dev"sv,
};

/// Folders of the home that may not be deleted; their content may.
constexpr std::array homeFolders{
    "Documents"sv, "Desktop"sv, "Downloads"sv,    "Pictures"sv, "Movies"sv,
    "Music"sv,     "Library"sv, "Applications"sv, "Public"sv,   ".Trash"sv,
};

/// Folders that may not be deleted; their content may.
constexpr std::array sharedFolders{"/Applications"sv, "/Library"sv, "/Users"sv};

/// Folders outside the home whose content may be deleted.
constexpr std::array allowedPlaces{
    "/Applications"sv, "/private/var/folders"sv, "/private/tmp"sv, "/tmp"sv, "/Library"sv,
};

/// Folders of the home with the user's own documents, to which no link may lead.
constexpr std::array documentFolders{
    "Documents"sv, "Desktop"sv, "Downloads"sv, "Pictures"sv, "Movies"sv, "Music"sv, "Public"sv,
};

/// Unlike platform::isBelow(), accepts paths that end with "/".
bool isIn(std::string_view path, std::string_view place) {
    return path.size() > place.size() && path.starts_with(place) && path[place.size()] == '/';
}

template <class Table, class Rule>
bool any(const Table& table, Rule rule) {
    return std::any_of(table.begin(), table.end(), rule);
}

bool contains(const std::vector<platform::EntryId>& ids, platform::EntryId id) {
    return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::optional<platform::EntryId> idAt(const platform::Result<platform::Place>& place) {
    return place ? platform::entryId(*place) : std::nullopt;
}

void append(std::vector<platform::EntryId>& ids, std::optional<platform::EntryId> id) {
    if (id)
        ids.push_back(*id);
}

} // namespace

bool isDeletionAllowed(const std::string& path, const platform::Disk& disk) {
    const std::string& home = disk.home();
    if (path.empty() || path == "/" || path == home)
        return false;
    if (any(systemPlaces, [&](std::string_view place) { return path == place || isIn(path, place); }))
        return false;
    if (any(homeFolders, [&](std::string_view name) { return path == home + "/" + std::string(name); }))
        return false;
    if (any(sharedFolders, [&](std::string_view folder) { return path == folder; }))
        return false;
    return isIn(path, home) || any(allowedPlaces, [&](std::string_view place) { return isIn(path, place); });
}

PlaceGuard::PlaceGuard(const platform::Disk& disk) : m_disk(disk) {
    // Of a protected folder that is a symbolic link, the target is protected as well.
    const auto appendBoth = [&](std::vector<platform::EntryId>& ids, std::string_view path) {
        append(ids, idAt(disk.place(path)));
        append(ids, idAt(disk.placeFollowed(path)));
    };
    for (const std::string_view place : systemPlaces)
        appendBoth(m_keptWhole, place);
    for (const std::string_view folder : sharedFolders)
        appendBoth(m_keptItself, folder);
    for (const std::string_view name : homeFolders)
        appendBoth(m_keptItself, disk.inHome(name));
    appendBoth(m_keptItself, disk.home());
    append(m_allowedBelow, idAt(disk.placeFollowed(disk.home())));
    // An allowed folder that is a symbolic link, or lies behind one, allows nothing of the link's target.
    for (const std::string_view path : allowedPlaces) {
        if (const auto place = disk.place(path); place && !place->isThroughLink)
            append(m_allowedBelow, platform::entryId(*place));
    }
    for (const std::string_view name : documentFolders) {
        std::string path = disk.inHome(name);
        if (const auto id = idAt(disk.placeFollowed(path)))
            m_documentFolders.push_back({std::move(path), *id});
    }
}

bool PlaceGuard::allows(const std::string& path, const platform::Place& place) const {
    if (const auto id = platform::entryId(place);
        id && (contains(m_keptItself, *id) || contains(m_keptWhole, *id)))
        return false;
    const platform::Result<std::vector<platform::EntryId>> above = platform::foldersAbove(m_disk, place);
    return above && allowsBelow(*above) && !(place.isThroughLink && isAmongDocuments(path, *above));
}

bool PlaceGuard::allowsEntriesOf(const std::string& path) const {
    const std::string entry = platform::joined(path, "x");
    const platform::Result<platform::Place> place = m_disk.place(entry);
    return place && allows(entry, *place);
}

bool PlaceGuard::allowsBelow(const std::vector<platform::EntryId>& above) const {
    const auto isAbove = [&](platform::EntryId id) {
        return contains(above, id);
    };
    return !any(m_keptWhole, isAbove) && any(m_allowedBelow, isAbove);
}

bool PlaceGuard::isAmongDocuments(const std::string& path,
                                  const std::vector<platform::EntryId>& above) const {
    return any(m_documentFolders, [&](const DocumentFolder& folder) {
        return contains(above, folder.id) && !isIn(path, folder.path);
    });
}

} // namespace core::LumvaleScanner
