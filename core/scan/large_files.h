#pragma once

#include "core/items/scan_item.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace core::LumvaleScanner {

/// The files of at least `minimumBytes` below `root`, largest first, at most `maxResults`; equal sizes in the
/// order of a depth-first walk by name. Hidden entries, packages and the root's own Library, .Trash and
/// Applications are passed over. Collecting stops at four times `maxResults` as a walk in that order would.
std::vector<ScanItem> scanLargeFiles(const platform::Disk& disk, const std::string& root,
                                     std::int64_t minimumBytes, std::size_t maxResults);

/// Whether a folder of this name is a package, whose content is nobody's to clean piece by piece.
bool isProtectedPackage(std::string_view name);

} // namespace core::LumvaleScanner
