#include "ui/shell/lumvale_window.h"

#include "ui/shell/close_filter.h"
#include "ui/shell/input_filter.h"
#include "ui/shell/screen_models.h"
#include "ui/style/typeface.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QQuickWindow>

#include <utility>

// Referenced in the constructor: otherwise the linker drops these functions of the static libraries, and with
// them the registration of the QML types.
void qml_register_types_Lumvale();
void qml_register_types_Lumvale_Style();

LumvaleWindow::LumvaleWindow(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                             platform::PhotoLibrary photos) {
    [[maybe_unused]] void (*volatile const registrations[])() = {qml_register_types_Lumvale,
                                                                 qml_register_types_Lumvale_Style};

    Typeface::setApplicationFont();

    new ThumbnailLoader(photos, executor, &m_engine);
    new ScreenModels(std::move(disk), history, std::move(executor), std::move(photos), &m_engine);
    m_engine.addImportPath(QStringLiteral("qrc:/qml"));
    m_engine.load(QUrl(QStringLiteral("qrc:/qml/Lumvale/shell/Main.qml")));
    if (window()) {
        new InputFilter(window());
        new CloseFilter(window());
    }
}

void LumvaleWindow::announce(const UpdateAlert& announcement, const std::function<void()>& activated) {
    if (const BackgroundTask* removal = CloseFilter::runningRemoval(*window())) {
        QObject::connect(
            removal, &BackgroundTask::runningChanged, window(),
            [this, announcement, activated] { announce(announcement, activated); },
            Qt::ConnectionType(Qt::QueuedConnection | Qt::SingleShotConnection));
        return;
    }
    window()->setProperty("announcement", QVariant::fromValue(announcement));
    window()->setWindowStates(window()->windowStates() & ~Qt::WindowMinimized);
    window()->raise();
    window()->requestActivate();
    activated();
}

QQuickWindow* LumvaleWindow::window() const {
    return m_engine.rootObjects().isEmpty()
               ? nullptr
               : qobject_cast<QQuickWindow*>(m_engine.rootObjects().constFirst());
}
