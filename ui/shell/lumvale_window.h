#pragma once

#include "app/history/history_store.h"
#include "app/update/update_alert.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_library.h"

#include <QQmlApplicationEngine>

#include <functional>

class QQuickWindow;

/// The main window with its QML engine, for one disk and its photo library. The constructor shows the window;
/// the destructor destroys it. Interface thread only.
class LumvaleWindow {
public:
    LumvaleWindow(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                  platform::PhotoLibrary photos);

    QQuickWindow* window() const; ///< null if loading the QML failed

    /// Shows the announcement above all open dialogs and raises the window. Waits until a running
    /// removal has ended and its dialog has closed. Calls `activated` at the end. Requires a
    /// window.
    void announce(
        const UpdateAlert& announcement, const std::function<void()>& activated = [] {});

private:
    QQmlApplicationEngine m_engine;
};
