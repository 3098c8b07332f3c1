#pragma once

#include <QMetaObject>
#include <QQuickItem>
#include <QTimer>
#include <QtQmlIntegration>

class QQuickWindow;

/// Runs a call that blocks the interface thread, after the busy state has been drawn.
///
/// During the call the window is neither repainted nor handles events, so the busy state must be on the
/// screen before. start() sets `running`; `ready` is emitted when a frame drawn since then has been swapped,
/// and its handler makes the blocking call. `finished` is emitted after the input events that were queued
/// during the call have been delivered. Keep the dialog open until then: otherwise those events would go to
/// the items behind it.
class BlockingAction : public QObject {
    Q_OBJECT
    Q_PROPERTY(bool running READ isRunning NOTIFY runningChanged)
    QML_ELEMENT

public:
    explicit BlockingAction(QObject* parent = nullptr);

    bool isRunning() const { return m_isRunning; }

    /// Waits for the next frame of the window that contains `item`, at most one second. Without an exposed
    /// window `ready` is emitted on the next turn of the event loop. Does nothing while running.
    Q_INVOKABLE void start(QQuickItem* item);

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
    bool m_isWaiting = false; ///< for a frame
};
