#pragma once

#include <string_view>

namespace core {

/// A section of the cleanup list. The enumerators are in the order of the sections.
enum class ScanCategory {
    cache,
    logs,
    trash,
    oldDownloads,
    appLeftovers,
    orphanLeftovers,
    virtualMachines,
    largeOldFiles,
};

/// Returns the category's fixed French identifier, which does not depend on the interface language.
std::string_view rawValue(ScanCategory category);

/// Returns the translation key of the category's name, "cat_…".
std::string_view translationKey(ScanCategory category);

} // namespace core
