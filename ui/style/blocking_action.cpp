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

void BlockingAction::start(QQuickItem* shown) {
    if (m_isRunning)
        return;
    m_isWaiting = true;
    setRunning(true);

    QQuickWindow* window = shown ? shown->window() : nullptr;
    if (window && window->isExposed()) {
        waitForFrame(window);
        // Drawing may stall for reasons of its own (a window just covered, a display asleep): the user has
        // decided, so the call is made. Even a machine at its limits draws a frame in this time.
        m_deadline.start(1s);
    } else {
        m_deadline.start(0ms);
    }
}

void BlockingAction::waitForFrame(QQuickWindow* window) {
    // A frame under way was synchronised before the busy state was set, and its swap must not count. So the
    // swap is listened for only from the next synchronisation on; that happens on the render thread while
    // this one stands still, hence the direct connection, and why the members may be touched there.
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
    if (!std::exchange(m_isWaiting, false)) // the frame and the deadline may both have been on their way
        return;
    disconnect(m_synchronized);
    disconnect(m_swapped);
    m_deadline.stop();

    // The screen, and this with it, may be gone after the call.
    const QPointer<BlockingAction> self(this);
    Q_EMIT ready();
    if (self)
        // A timer of no delay runs after all events that were waiting.
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
