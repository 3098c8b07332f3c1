#pragma once

#include "core/scan/scan_item.h"

#include <vector>

/// What a cleanup scan proposes.
struct ScanResult {
    explicit ScanResult(std::vector<ScanItem> items);

    std::vector<ScanItem> items;
    std::int64_t totalBytes; ///< of all items
};
