#include "core/items/scan_category.h"

#include <cstddef>

namespace core {

namespace {

struct Names {
    std::string_view rawValue;
    std::string_view translationKey;
};

/// In the order of the enumeration.
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
static_assert(std::size(names) == allScanCategories.size());

const Names& namesOf(ScanCategory category) {
    return names[static_cast<std::size_t>(category)];
}

} // namespace

std::string_view rawValue(ScanCategory category) {
    return namesOf(category).rawValue;
}

std::optional<ScanCategory> scanCategory(std::string_view raw) {
    for (const ScanCategory category : allScanCategories) {
        if (rawValue(category) == raw)
            return category;
    }
    return std::nullopt;
}

std::string_view translationKey(ScanCategory category) {
    return namesOf(category).translationKey;
}

} // namespace core
