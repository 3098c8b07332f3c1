#pragma once

#include "core/removal/partial_removal.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace core {

/// An entry of the Trash that could not be removed.
struct TrashFailure {
    std::string name;         ///< file name, as bytes
    std::string reasonKey;    ///< translation key, "err_trash_…"
    std::string rawTechnical; ///< error description, not translated

    bool operator==(const TrashFailure&) const = default;
};

/// The result of emptying the Trash.
struct TrashReport {
    int succeeded = 0;
    int failed = 0;
    std::int64_t bytesFreed = 0; ///< total size of the removed entries, measured before the removal
    bool couldNotAccess = false; ///< the Trash could not be listed; all other members are empty
    std::vector<TrashFailure> failedDetails; ///< in the order of the listing
    std::vector<std::string> left;           ///< paths that were not removed because of a stop
    std::optional<PartialRemoval> partial;   ///< of the first of those; included in bytesFreed
};

namespace LumvaleScanner {

/// Removes every entry of the Trash permanently. If an entry cannot be removed, unlocks it and tries once
/// more. A failure does not stop the other removals. Blocks; any thread. Counts in `progress`, which may be
/// null, first the entries of the Trash and then the removed ones; ends early when that is stopped.
TrashReport emptyTrash(const platform::Disk& disk = platform::Disk::current(),
                       platform::Progress* progress = nullptr);

} // namespace LumvaleScanner

} // namespace core
