#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace core {

/// The health of the machine as one score.
struct HealthScore {
    int score = 100; ///< 0 to 100, higher is healthier
    std::int64_t freeDiskBytes = 0;
    std::int64_t totalDiskBytes = 0; ///< 0 when unknown
    std::optional<int> batteryHealthPercent;
    bool memoryPressureOK = true;

    /// Returns a fixed French word for the score's band; screens show a translated one for the same bands.
    std::string_view label() const;
};

namespace LumvaleScanner {

/// Returns the score of a volume with this much free space: 0 for a full one, 100 from five sevenths free on,
/// and 100 where the capacity is unknown.
int scoreFor(std::int64_t freeBytes, std::int64_t totalBytes);

/// Returns the score of the home's volume. One system call: any thread.
HealthScore healthScore(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner

} // namespace core
