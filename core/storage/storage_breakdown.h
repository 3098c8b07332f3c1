#pragma once

#include "core/storage/storage_entry.h"
#include "platform/files/disk.h"

#include <vector>

namespace core::LumvaleScanner {

/// Returns the visible folders of the home and /Applications with their sizes, largest first, without those
/// of size 0. Walks all of them: not for the interface thread. Skips folders that cannot be read.
std::vector<StorageEntry> storageBreakdown(const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleScanner
