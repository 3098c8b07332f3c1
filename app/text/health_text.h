#pragma once

#include "core/health/health_score.h"

#include <QString>

namespace display {

/// Returns the translation key of a band's name, "health_…".
QString healthKey(core::HealthBand band);

/// Returns the sentence about free and total disk space in the interface language.
QString freeSpace(const core::HealthScore& health);

} // namespace display
