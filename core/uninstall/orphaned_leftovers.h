#pragma once

#include "core/items/candidate.h"
#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <string_view>
#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the entries in the home's Library whose names look like the identifier of an application that is
/// not installed, in the order of the folders searched. Blocks; not for the interface thread.
std::vector<ScanItem> orphanedLeftovers(const platform::Disk& disk = platform::Disk::current());

/// Returns the same entries without measuring them, those of size 0 included; some of them soon after
/// `progress`, which may be null, is stopped. Counts nothing in it, except unread folders; returns nothing if
/// an application could not be read for lack of descriptors.
std::vector<Candidate> orphanCandidates(const platform::Disk& disk, platform::Progress* progress = nullptr);

/// Returns whether a name looks like a bundle identifier in reverse domain notation: three or more non-empty
/// components separated by dots, of ASCII letters, digits, "-" and "_".
bool looksLikeAppIdentifier(std::string_view stem);

} // namespace core::LumvaleUninstaller
