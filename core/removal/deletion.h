#pragma once

#include "platform/base/error.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

namespace core {

/// A path that was not deleted, and why.
struct DeletionFailure {
    std::string path; ///< as given when the guard refused it, else standardised
    platform::Error error;
};

/// The outcome of deleting paths; both lists in the order of the input.
struct DeletionOutcome {
    std::vector<std::string> succeeded; ///< standardised
    std::vector<DeletionFailure> failed;
};

namespace LumvaleScanner {

/// Moves each path to the Trash, or removes it for good where it already lies there. Every removal that a
/// user requests goes through this function: each path must pass the guard in its standardised form. Blocks;
/// any thread. Never fails as a whole.
DeletionOutcome deletePaths(const std::vector<std::string>& paths,
                            const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner

} // namespace core
