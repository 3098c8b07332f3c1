#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <string>

namespace core {

/// The part of an entry of the Trash that was removed before the removal was stopped.
struct PartialRemoval {
    std::string path; ///< of the entry, which is still in the Trash with the other part
    std::int64_t bytesFreed = 0;
};

/// Returns the removed part of an entry that had `sizeBefore` bytes. Measures the other part by a walk.
PartialRemoval partialRemoval(const platform::Disk& disk, const std::string& path, std::int64_t sizeBefore);

} // namespace core
