#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The health of the machine at one look.
struct HealthScore {
    int score = 100; ///< 0 to 100, higher is healthier
    std::int64_t freeDiskBytes = 0;
    std::int64_t totalDiskBytes = 0; ///< 0 when unknown
    std::optional<int> batteryHealthPercent;
    bool memoryPressureOK = true;

    /// A fixed French word for the score's band; screens show a translated one with the same bands.
    std::string_view label() const;
};
