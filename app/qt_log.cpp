#include "app/qt_log.h"

#include <QLoggingCategory>

void silenceQt() {
    // Rules take the place of all earlier ones, so all are set here, and once.
    [[maybe_unused]] static const bool isDone = [] {
        QLoggingCategory::setFilterRules(
            QStringLiteral("qt.gui.imageio*=false\nqt.imageformats*=false\nqt.network.ssl.warning=false"));
        return true;
    }();
}
