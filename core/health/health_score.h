#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace core {

/// A range of scores: excellent from 85, good from 65, watch from 40, and clean below.
enum class HealthBand { excellent, good, watch, clean };

/// The health of the machine, rated by its free disk space.
struct HealthScore {
    int score = 100; ///< 0 to 100, higher is healthier
    std::int64_t freeDiskBytes = 0;
    std::int64_t totalDiskBytes = 0; ///< 0 when unknown
    std::optional<int> batteryHealthPercent;
    bool memoryPressureOK = true;

    HealthBand band() const; ///< clean for a score above 100

    /// Returns the French name of the band. Screens show a translated text instead.
    std::string_view label() const;
};

namespace LumvaleScanner {

/// Returns the score of a volume: 140 times the free share, truncated and clamped to 0…100. Returns 100 if
/// `totalBytes` is not positive.
int scoreFor(std::int64_t freeBytes, std::int64_t totalBytes);

/// Returns the score of the volume that holds the home folder; with all bytes 0 and the score 100 if the
/// capacity cannot be read. Fast enough for any thread.
HealthScore healthScore(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner

} // namespace core
