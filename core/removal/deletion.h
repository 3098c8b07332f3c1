#pragma once

#include "platform/base/error.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

namespace core {

/// A path that was not deleted, and the reason.
struct DeletionFailure {
    std::string path; ///< as given if the guard refused it, otherwise standardized
    platform::Error error;
};

/// The result of a deletion; both lists in the order of the input.
struct DeletionOutcome {
    std::vector<std::string> succeeded; ///< standardized paths
    std::vector<DeletionFailure> failed;
};

namespace LumvaleScanner {

/// Moves each path to the Trash, or removes it permanently if it is inside the Trash. Every deletion that
/// the user requests, except emptying the Trash, goes through this function: it refuses a path whose
/// standardized form fails isDeletionAllowed() or whose place fails PlaceGuard. A failure does not stop the
/// other deletions. Blocks; any thread.
DeletionOutcome deletePaths(const std::vector<std::string>& paths,
                            const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner

} // namespace core
