#pragma once

#include "core/storage/storage_entry.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <vector>

namespace core::LumvaleScanner {

/// Returns the visible folders of the home and /Applications with their sizes, largest first, without those
/// of size 0. Walks all of them: not for the interface thread. Skips folders that cannot be read.
/// Counts in `progress`, which may be null; the result is incomplete when that is stopped.
std::vector<StorageEntry> storageBreakdown(const platform::Disk& disk = platform::Disk::current(),
                                           platform::Progress* progress = nullptr);

} // namespace core::LumvaleScanner
