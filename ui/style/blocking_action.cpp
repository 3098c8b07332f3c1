#include "ui/style/blocking_action.h"

#include <QPointer>

#include <QQuickWindow>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

BlockingAction::BlockingAction(QObject* parent) : QObject(parent) {
    m_deadline.setSingleShot(true);
    connect(&m_deadline, &QTimer::timeout, this, &BlockingAction::perform);
}

void BlockingAction::start(QQuickItem* item) {
    if (m_isRunning)
        return;
    m_isWaiting = true;
    setRunning(true);

    QQuickWindow* window = item ? item->window() : nullptr;
    if (window && window->isExposed()) {
        waitForFrame(window);
        // No frame may ever come, e.g. if the window has just been covered or the display is asleep. The user
        // has confirmed, so the call is made anyway. One second suffices for a frame on a loaded machine.
        m_deadline.start(1s);
    } else {
        m_deadline.start(0ms);
    }
}

void BlockingAction::waitForFrame(QQuickWindow* window) {
    // The frame being rendered was synchronized before the busy state was set, so its swap must be ignored:
    // frameSwapped is connected at the next synchronization. That signal is emitted on the render thread
    // while this thread is blocked, so the connection is direct, and accessing members is safe.
    m_synchronized = connect(
        window, &QQuickWindow::afterSynchronizing, this,
        [this, window] {
            disconnect(m_synchronized);
            m_swapped = connect(window, &QQuickWindow::frameSwapped, this, &BlockingAction::perform,
                                Qt::QueuedConnection);
        },
        Qt::DirectConnection);
    window->update();
}

void BlockingAction::perform() {
    if (!std::exchange(m_isWaiting, false)) // both the frame and the deadline may have been queued
        return;
    disconnect(m_synchronized);
    disconnect(m_swapped);
    m_deadline.stop();

    // The handler may destroy the screen and this object with it.
    const QPointer<BlockingAction> self(this);
    Q_EMIT ready();
    if (self)
        // A timer of zero runs after all queued events.
        QTimer::singleShot(0ms, this, &BlockingAction::finish);
}

void BlockingAction::finish() {
    setRunning(false);
    Q_EMIT finished();
}

void BlockingAction::setRunning(bool running) {
    if (m_isRunning == running)
        return;
    m_isRunning = running;
    Q_EMIT runningChanged();
}
