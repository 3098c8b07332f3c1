#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace core {

/// The section of the cleanup list that an item belongs to, in the order of the sections.
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

inline constexpr std::array allScanCategories{
    ScanCategory::cache,           ScanCategory::logs,          ScanCategory::trash,
    ScanCategory::oldDownloads,    ScanCategory::appLeftovers,  ScanCategory::orphanLeftovers,
    ScanCategory::virtualMachines, ScanCategory::largeOldFiles,
};

/// The fixed French name by which a category is known outside the program's memory.
std::string_view rawValue(ScanCategory category);

/// The category of exactly this raw value.
std::optional<ScanCategory> scanCategory(std::string_view rawValue);

/// The translation key of the category's name, "cat_…".
std::string_view translationKey(ScanCategory category);

} // namespace core
