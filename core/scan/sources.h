#pragma once

#include "core/items/candidate.h"

#include <vector>

/// Sources of the cleanup scan that list one folder. A folder that cannot be listed gives no candidates. They
/// return some candidates soon after `progress`, which may be null, is stopped; they count only unread
/// folders in it.
namespace core::LumvaleScanner {

/// Returns the direct children of a folder; hidden ones (names with a leading ".") are skipped in the
/// categories cache and logs.
std::vector<Candidate> scanDirectoryEntries(const platform::Disk& disk, const std::string& folder,
                                            ScanCategory category, std::string_view explanation,
                                            bool safeByDefault, platform::Progress* progress = nullptr);

/// Returns the direct children of a folder that were last modified more than 30 days before `now`.
std::vector<Candidate> scanOldDownloads(const platform::Disk& disk, const std::string& folder,
                                        platform::Date now, platform::Progress* progress = nullptr);

} // namespace core::LumvaleScanner
