#pragma once

#include <QMetaObject>
#include <QQuickItem>
#include <QTimer>
#include <QtQmlIntegration>

class QQuickWindow;

/// A call that blocks the interface thread, made only once the screen says so.
///
/// While it runs nothing is drawn and nothing is answered, so whatever shows that the program is busy must be
/// on the screen before. `running` turns true at once, `ready` comes when a frame drawn after that has
/// reached the screen, and the blocking call is made in its handler. `finished` comes after the clicks and
/// keys that were waiting meanwhile have been delivered: what stands in front must stay there until then, or
/// they would hit what lies beneath.
class BlockingAction : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    QML_ELEMENT

public:
    explicit BlockingAction(QObject* parent = nullptr);

    bool isRunning() const { return m_isRunning; }

    /// Waits for the window that `shown` is in. Does nothing while running.
    Q_INVOKABLE void start(QQuickItem* shown);

Q_SIGNALS:
    void runningChanged();
    void ready();
    void finished();

private:
    void waitForFrame(QQuickWindow* window);
    void perform();
    void finish();
    void setRunning(bool running);

    QTimer m_deadline;
    QMetaObject::Connection m_synchronized;
    QMetaObject::Connection m_swapped;
    bool m_isRunning = false;
    bool m_isWaiting = false; ///< for the screen
};
