#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// An entry of the Trash that could not be removed.
struct TrashFailure {
    std::string name;         ///< its own name, as bytes
    std::string reasonKey;    ///< translation key, "err_trash_…"
    std::string rawTechnical; ///< the system's sentence

    bool operator==(const TrashFailure&) const = default;
};

/// What emptying the Trash came to.
struct TrashReport {
    int succeeded = 0;
    int failed = 0;
    std::int64_t bytesFreed = 0;             ///< of the removed entries, measured just before
    bool couldNotAccess = false;             ///< the Trash could not be listed; all else is zero
    std::vector<TrashFailure> failedDetails; ///< in the order of the entries
};
