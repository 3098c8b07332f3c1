#pragma once

#include "core/items/candidate.h"
#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the virtual machines in their usual folders, then the files that their software keeps in the
/// Library.
std::vector<ScanItem> virtualMachineItems(const platform::Disk& disk = platform::Disk::current());

/// Returns the same entries before they are measured.
std::vector<Candidate> virtualMachineCandidates(const platform::Disk& disk);

} // namespace core::LumvaleUninstaller
