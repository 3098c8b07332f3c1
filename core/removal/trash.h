#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <string>
#include <vector>

namespace core {

/// An entry of the Trash that could not be removed.
struct TrashFailure {
    std::string name;         ///< its own name, as bytes
    std::string reasonKey;    ///< translation key, "err_trash_…"
    std::string rawTechnical; ///< the system's sentence

    bool operator==(const TrashFailure&) const = default;
};

/// The outcome of emptying the Trash.
struct TrashReport {
    int succeeded = 0;
    int failed = 0;
    std::int64_t bytesFreed = 0;             ///< by the removed entries, measured just before
    bool couldNotAccess = false;             ///< the Trash could not be listed; everything else is zero
    std::vector<TrashFailure> failedDetails; ///< in the order of the entries
};

namespace LumvaleScanner {

/// Removes every entry of the Trash for good. An entry that cannot be removed is unlocked and tried once
/// more. Blocks; any thread.
TrashReport emptyTrash(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner

} // namespace core
