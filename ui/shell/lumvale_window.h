#pragma once

#include "app/history/history_store.h"
#include "platform/disk.h"
#include "platform/executor.h"
#include "platform/photo_library.h"

#include <QQmlApplicationEngine>

class QQuickWindow;

/// The program's window with all that is in it, working on one disk and its photo library. It shows itself
/// and lives as long as this.
class LumvaleWindow {
public:
    LumvaleWindow(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                  platform::PhotoLibrary photos);

    QQuickWindow* window() const; ///< null when it could not be made

private:
    QQmlApplicationEngine m_engine;
};
