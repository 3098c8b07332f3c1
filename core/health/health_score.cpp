#include "core/health/health_score.h"

#include "platform/system/volume.h"

#include <algorithm>

namespace core {

HealthBand HealthScore::band() const {
    if (score > 100 || score < 40)
        return HealthBand::clean;
    if (score < 65)
        return HealthBand::watch;
    return score < 85 ? HealthBand::good : HealthBand::excellent;
}

std::string_view HealthScore::label() const {
    switch (band()) {
    case HealthBand::excellent:
        return "Très bonne santé";
    case HealthBand::good:
        return "Bonne santé";
    case HealthBand::watch:
        return "À surveiller";
    case HealthBand::clean:
        break;
    }
    return "À nettoyer";
}

namespace LumvaleScanner {

int scoreFor(std::int64_t freeBytes, std::int64_t totalBytes) {
    constexpr double factor = 140.0;
    if (totalBytes <= 0)
        return 100;
    const double ratio = static_cast<double>(freeBytes) / static_cast<double>(totalBytes);
    return static_cast<int>(std::clamp(ratio * factor, 0.0, 100.0));
}

HealthScore healthScore(const platform::Disk& disk) {
    const platform::VolumeCapacity capacity =
        platform::volumeCapacity(disk, disk.home()).value_or(platform::VolumeCapacity{});
    HealthScore health;
    health.score = scoreFor(capacity.availableBytes, capacity.totalBytes);
    health.freeDiskBytes = capacity.availableBytes;
    health.totalDiskBytes = capacity.totalBytes;
    return health;
}

} // namespace LumvaleScanner

} // namespace core
