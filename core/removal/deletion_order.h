#pragma once

#include "platform/files/disk.h"

#include <set>
#include <string>
#include <vector>

namespace core::LumvaleScanner {

/// Returns the paths in an order that is safe to delete in: the content of a folder before the folder, and
/// entries of the Trash, which are removed permanently, before paths that are moved there. Otherwise a file
/// just moved to the Trash could be removed permanently, if it got the name of an entry that no longer
/// existed.
std::vector<std::string> inDeletionOrder(const std::set<std::string>& paths, const platform::Disk& disk);

} // namespace core::LumvaleScanner
