#pragma once

#include "core/removal/partial_removal.h"
#include "platform/base/error.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"
#include "platform/files/entry_id.h"
#include "platform/removal/trash.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace core {

/// A path that was not deleted, and the reason.
struct DeletionFailure {
    std::string path; ///< as given if the guard refused it, otherwise standardized
    platform::Error error;
};

/// A path that was moved to the Trash, and where it is there.
struct MovedEntry {
    std::string path; ///< standardized
    platform::TrashEntry inTrash;
    std::optional<platform::EntryId> folder; ///< that it was moved from; absent if it could not be examined
};

/// The result of a deletion; all lists in the order of the input.
struct DeletionOutcome {
    std::vector<std::string> succeeded; ///< standardized paths
    std::vector<MovedEntry> moved;      ///< those of them that putBack() can put back
    std::vector<DeletionFailure> failed;
    std::vector<std::string> left;         ///< standardized paths that were not deleted because of a stop
    std::optional<PartialRemoval> partial; ///< of the first of those, if it was in the Trash
};

namespace LumvaleScanner {

/// Moves each path to the Trash, or removes it permanently if it is inside the Trash. Every deletion that
/// the user requests, except emptying the Trash, goes through this function: it refuses a path whose
/// standardized form fails isDeletionAllowed() or whose place fails PlaceGuard. A failure does not stop the
/// other deletions. Blocks; any thread. Counts in `progress`, which may be null, first the entries of the
/// paths to remove permanently, then those removed and the paths moved; ends early when that is stopped.
DeletionOutcome deletePaths(const std::vector<std::string>& paths,
                            const platform::Disk& disk = platform::Disk::current(),
                            platform::Progress* progress = nullptr);

/// The domain of the error of a path that the guard refused.
inline constexpr std::string_view refusalDomain = "Lumvale";

/// Returns whether the error says that the guard refused the path.
bool isRefusal(const platform::Error& error);

} // namespace LumvaleScanner

} // namespace core
