#include "ui/shell/close_filter.h"

#include <QEvent>
#include <QQuickWindow>

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
