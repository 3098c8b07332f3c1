#include "core/removal/deletion_guard.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace core::LumvaleScanner {

namespace {

using namespace std::string_view_literals;

// All comparisons are exact and case-sensitive.

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

/// Unlike platform::isBelow(), accepts paths that end with "/".
bool isIn(std::string_view path, std::string_view place) {
    return path.size() > place.size() && path.starts_with(place) && path[place.size()] == '/';
}

template <class Table, class Rule>
bool any(const Table& table, Rule rule) {
    return std::any_of(table.begin(), table.end(), rule);
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

} // namespace core::LumvaleScanner
