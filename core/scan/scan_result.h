#pragma once

#include "core/items/scan_item.h"

#include <vector>

namespace core {

/// What a cleanup scan proposes.
struct ScanResult {
    explicit ScanResult(std::vector<ScanItem> items);

    std::vector<ScanItem> items;
    std::int64_t totalBytes; ///< of all items
};

} // namespace core
