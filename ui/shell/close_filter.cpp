#include "ui/shell/close_filter.h"

#include <QKeyEvent>
#include <QQuickWindow>

namespace {

/// Returns true for Ctrl-Q and Ctrl-W, which Qt has on some desktops only. A Mac's menus handle its keys.
bool isCloseKey(const QKeyEvent& key) {
    return key.matches(QKeySequence::Quit) || key.matches(QKeySequence::Close)
           || (key.modifiers() == Qt::ControlModifier && (key.key() == Qt::Key_Q || key.key() == Qt::Key_W));
}

} // namespace

CloseFilter::CloseFilter(QQuickWindow* window) : QObject(window), m_window(*window) {
    window->installEventFilter(this);
}

BackgroundTask* CloseFilter::runningRemoval(const QQuickWindow& window) {
    for (BackgroundTask* task : window.findChildren<BackgroundTask*>())
        if (task->isRemoving())
            return task;
    return nullptr;
}

bool CloseFilter::eventFilter(QObject*, QEvent* event) {
    if (event->type() == QEvent::KeyPress && isCloseKey(static_cast<const QKeyEvent&>(*event))) {
        m_window.close();
        return true;
    }
    if (event->type() != QEvent::Close)
        return false;
    BackgroundTask* removal = runningRemoval(m_window);
    if (!removal)
        return false;
    // Queued, since runningChanged is emitted while the result is being published.
    connect(removal, &BackgroundTask::runningChanged, &m_window, &QQuickWindow::close,
            Qt::ConnectionType(Qt::QueuedConnection | Qt::UniqueConnection));
    removal->stop();
    event->ignore();
    return true;
}
