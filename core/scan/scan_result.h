#pragma once

#include "core/items/scan_item.h"

#include <vector>

namespace core {

/// The result of a cleanup scan.
struct ScanResult {
    explicit ScanResult(std::vector<ScanItem> items);

    std::vector<ScanItem> items;
    std::int64_t totalBytes; ///< sum over all items, saturated

    /// Number of folders that were left out because no file descriptors were left.
    std::int64_t unreadFolders = 0;
};

} // namespace core
