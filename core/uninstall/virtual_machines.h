#pragma once

#include "core/items/candidate.h"
#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the virtual machines in their default folders, then the settings, caches and logs of the
/// virtualization products. Blocks; not for the interface thread.
std::vector<ScanItem> virtualMachineItems(const platform::Disk& disk = platform::Disk::current());

/// Returns the same entries without measuring them, including paths that may not exist. Counts folders in
/// `progress` that could not be read for lack of descriptors.
std::vector<Candidate> virtualMachineCandidates(const platform::Disk& disk,
                                                platform::Progress* progress = nullptr);

} // namespace core::LumvaleUninstaller
