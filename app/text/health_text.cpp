#include "app/text/health_text.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"

using namespace Qt::StringLiterals;

QString display::healthKey(core::HealthBand band) {
    switch (band) {
    case core::HealthBand::excellent:
        return u"health_excellent"_s;
    case core::HealthBand::good:
        return u"health_good"_s;
    case core::HealthBand::watch:
        return u"health_watch"_s;
    case core::HealthBand::clean:
        break;
    }
    return u"health_clean"_s;
}

QString display::freeSpace(const core::HealthScore& health) {
    return u"%1 : %2 %3 %4"_s.arg(tr(u"word_free_space"_s), size(health.freeDiskBytes), tr(u"word_of"_s),
                                  size(health.totalDiskBytes));
}
