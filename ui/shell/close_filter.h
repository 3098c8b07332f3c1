#pragma once

#include "app/execution/background_task.h"

#include <QObject>

class QQuickWindow;

/// Closes a window by its shortcuts, also while a dialog is open, and delays closing it until the running
/// removal has stopped and is recorded in the history. Owned by the window.
class CloseFilter : public QObject {
    Q_OBJECT

public:
    explicit CloseFilter(QQuickWindow* window);

    /// Returns the task of the removal that runs in the window; null if there is none.
    static BackgroundTask* runningRemoval(const QQuickWindow& window);

    bool eventFilter(QObject* object, QEvent* event) override;

private:
    QQuickWindow& m_window;
};
