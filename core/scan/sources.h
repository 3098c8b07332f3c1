#pragma once

#include "core/items/candidate.h"

#include <cstdint>
#include <vector>

/// The cleanup scan's own sources.
namespace core::LumvaleScanner {

/// The direct children of a folder; of caches and logs without those whose name begins with ".".
std::vector<Candidate> scanDirectoryEntries(const platform::Disk& disk, const std::string& folder,
                                            ScanCategory category, std::string_view explanation,
                                            bool safeByDefault);

/// The direct children of a folder that were last changed more than 30 days before `now`.
std::vector<Candidate> scanOldDownloads(const platform::Disk& disk, const std::string& folder,
                                        platform::Date now);

/// The size by which an entry is proposed: see platform::measure.
std::int64_t directorySize(const platform::Disk& disk, const std::string& path);

} // namespace core::LumvaleScanner
