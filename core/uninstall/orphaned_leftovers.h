#pragma once

#include "core/items/candidate.h"
#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <string_view>
#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the entries in the home's Library that seem to belong to applications no longer installed, in the
/// order of the folders searched.
std::vector<ScanItem> orphanedLeftovers(const platform::Disk& disk = platform::Disk::current());

/// Returns the same entries before they are measured.
std::vector<Candidate> orphanCandidates(const platform::Disk& disk);

/// Returns whether a name looks like an identifier in reverse domain order: three or more pieces between
/// dots, of ASCII letters, digits, "-" and "_".
bool looksLikeAppIdentifier(std::string_view stem);

} // namespace core::LumvaleUninstaller
