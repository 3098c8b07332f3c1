#pragma once

#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <string>
#include <string_view>
#include <vector>

namespace core {

/// An entry that a source of the scan proposes, before it is measured. Sources gather candidates from
/// listings alone, so that all of them can be measured in one walk.
struct Candidate {
    std::string path;
    ScanCategory category;
    std::string_view explanation; ///< a translation key, a literal
    bool safeByDefault;
};

/// Whether a candidate of no size becomes an item.
enum class NoSize { drop, keep };

/// The candidates as items, in their order, with sizes and dates.
std::vector<ScanItem> measured(const platform::Disk& disk, const std::vector<Candidate>& candidates,
                               NoSize noSize = NoSize::drop);

} // namespace core
