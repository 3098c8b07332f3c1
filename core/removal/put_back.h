#pragma once

#include "core/removal/deletion.h"

namespace core {

/// A path that was not put back, and the reason.
struct PutBackFailure {
    std::string path;
    platform::Error error;
};

/// The result of putting entries back; all lists in the order in which they were tried.
struct PutBackOutcome {
    std::vector<std::string> succeeded;
    std::vector<PutBackFailure> failed;
    std::vector<std::string> left; ///< paths that were not tried because of a stop
};

namespace LumvaleScanner {

/// Moves entries that deletePaths() moved to the Trash back to their paths, the last one first, so that a
/// folder is put back before its content. Never replaces an entry, creates no folder, and refuses a path or
/// place that deletePaths() would refuse, and one behind a symbolic link in another folder than the entry was
/// moved from. A failure does not stop the others. Blocks; any thread. Counts the entries in `progress`,
/// which may be null; ends early when that is stopped.
PutBackOutcome putBack(const std::vector<MovedEntry>& moved,
                       const platform::Disk& disk = platform::Disk::current(),
                       platform::Progress* progress = nullptr);

} // namespace LumvaleScanner

} // namespace core
