
#include "core/removal/deletion_guard.h"
#include <algorithm>
#include <array>
#include <string_view>

// What may never be deleted, whoever asks. Exact, case-sensitive comparisons of text.

namespace core::LumvaleScanner {

namespace {

using namespace std::string_view_literals;

/// Refused with everything below them.
constexpr std::array systemPlaces{
    "/System"sv,         "/usr"sv,           "/bin"sv,   "/sbin"sv, "/private/etc"sv,
    "/private/var/db"sv, "/Library/Apple"sv, "/cores"sv, "/dev"sv,
};

/// Refused themselves, in the home; what is in them may go.
constexpr std::array foldersOfHome{
    "Documents"sv, "Desktop"sv, "Downloads"sv,    "Pictures"sv, "Movies"sv,
    "Music"sv,     "Library"sv, "Applications"sv, "Public"sv,   ".Trash"sv,
};

/// Refused themselves.
constexpr std::array sharedFolders{"/Applications"sv, "/Library"sv, "/Users"sv};

/// Only what is in these, or in the home, may go.
constexpr std::array allowedPlaces{
    "/Applications"sv, "/private/var/folders"sv, "/private/tmp"sv, "/tmp"sv, "/Library"sv,
};

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
    if (any(foldersOfHome, [&](std::string_view name) { return path == home + "/" + std::string(name); }))
        return false;
    if (any(sharedFolders, [&](std::string_view folder) { return path == folder; }))
        return false;
    return isIn(path, home) || any(allowedPlaces, [&](std::string_view place) { return isIn(path, place); });
}

} // namespace core::LumvaleScanner
