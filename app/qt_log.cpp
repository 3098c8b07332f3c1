#include "app/qt_log.h"

#include <QLoggingCategory>

void silenceQt() {
    // Each call of setFilterRules() replaces all earlier rules.
    [[maybe_unused]] static const bool isDone = [] {
        QLoggingCategory::setFilterRules(
            QStringLiteral("qt.gui.imageio*=false\nqt.imageformats*=false\nqt.network.ssl.warning=false"));
        return true;
    }();
}
