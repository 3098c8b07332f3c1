#pragma once

#include <QObject>
#include <QtQmlIntegration>

class QJSEngine;
class QQmlEngine;

/// The desktop's request for reduced motion, a QML singleton. False until it is set.
class ReducedMotion : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isRequested READ isRequested NOTIFY isRequestedChanged)

public:
    static ReducedMotion& shared();
    static ReducedMotion* create(QQmlEngine* engine, QJSEngine* script);

    bool isRequested() const { return m_isRequested; }
    void setRequested(bool requested);

Q_SIGNALS:
    void isRequestedChanged();

private:
    ReducedMotion() = default;

    bool m_isRequested = false;
};
