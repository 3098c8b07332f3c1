#pragma once

#include "core/items/scan_item.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace core::LumvaleScanner {

/// Returns the files of at least `minBytes` below `root`, largest first, at most `maxResults`; equal sizes in
/// the order of a depth-first walk by name. Skips hidden entries, packages, and the folders Library, .Trash
/// and Applications of `root`. Considers at most the first 4 × `maxResults` large files in subfolders, in the
/// order of that walk. Blocks; any thread. Counts in `progress`, which may be null; the result is incomplete
/// when that is stopped.
std::vector<ScanItem> scanLargeFiles(const platform::Disk& disk, const std::string& root,
                                     std::int64_t minBytes, std::size_t maxResults,
                                     platform::Progress* progress = nullptr);

} // namespace core::LumvaleScanner
