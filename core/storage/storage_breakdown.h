#pragma once

#include "core/storage/storage_entry.h"
#include "platform/files/disk.h"

#include <vector>

namespace core::LumvaleScanner {

/// Returns the folders of the home and the applications folder with their sizes, largest first. Measures all
/// of them: not for the interface thread. Unreadable folders are left out.
std::vector<StorageEntry> storageBreakdown(const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleScanner
