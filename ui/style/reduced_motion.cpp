#include "ui/style/reduced_motion.h"

#include <QJSEngine>

ReducedMotion& ReducedMotion::shared() {
    static ReducedMotion motion;
    return motion;
}

ReducedMotion* ReducedMotion::create(QQmlEngine* /*engine*/, QJSEngine* /*script*/) {
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

void ReducedMotion::setRequested(bool requested) {
    if (m_isRequested == requested)
        return;
    m_isRequested = requested;
    Q_EMIT isRequestedChanged();
}
