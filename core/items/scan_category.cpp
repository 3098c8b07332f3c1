#include "core/items/scan_category.h"

#include <cstddef>
#include <iterator>

namespace core {

namespace {

struct Names {
    std::string_view rawValue;
    std::string_view translationKey;
};

/// In the order of the enumerators.
constexpr Names names[] = {
    {"Fichiers temporaires", "cat_cache"},
    {"Journaux d'applications", "cat_logs"},
    {"Corbeille", "cat_trash"},
    {"Anciens téléchargements", "cat_old_downloads"},
    {"Restes d'une application", "cat_app_leftovers"},
    {"Résidus d'anciennes applications", "cat_orphan_leftovers"},
    {"Machines virtuelles", "cat_virtual_machines"},
    {"Gros et vieux fichiers", "cat_large_old_files"},
};
static_assert(std::size(names) == static_cast<std::size_t>(ScanCategory::largeOldFiles) + 1);

const Names& namesOf(ScanCategory category) {
    return names[static_cast<std::size_t>(category)];
}

} // namespace

std::string_view rawValue(ScanCategory category) {
    return namesOf(category).rawValue;
}

std::string_view translationKey(ScanCategory category) {
    return namesOf(category).translationKey;
}

} // namespace core
