#pragma once

#include "app/history/history_store.h"
#include "app/update/update_alert.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_library.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

/// The program's window with all that is in it, working on one disk and its photo library. It shows itself
/// and lives as long as this.
class LumvaleWindow {
public:
    LumvaleWindow(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                  platform::PhotoLibrary photos);

    QQuickWindow* window() const; ///< null when it could not be made

    /// Comes to the front, also from behind other programs, and says it above everything that is open; once a
    /// blocking action, with the dialog that it belongs to, is over.
    void announce(const UpdateAlert& announcement);

private:
    QQmlApplicationEngine m_engine;
};
