#include "ui/shell/lumvale_window.h"

#include "ui/shell/close_filter.h"
#include "ui/shell/digit_row.h"
#include "ui/shell/file_actions.h"
#include "ui/shell/input_filter.h"
#include "ui/shell/modal_accessibility.h"
#include "ui/shell/qml_modules.h"
#include "ui/shell/screen_models.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QQuickWindow>
#include <QScreen>

#include <utility>

namespace {

/// The screens were designed for windows of at least this size; on a smaller screen their lists are shorter.
constexpr QSize designedMinimum{820, 700};

/// Height of a title bar or panel. Title bars aren't known before the window is shown, and Wayland has no
/// panels in the free area of a screen.
constexpr QSize bar{0, 40};

/// Returns the size of the largest window that the screen shows completely, without its title bar.
QSize largestSize(const QScreen& screen) {
    return screen.availableSize().boundedTo(screen.size() - bar) - bar;
}

void setMinimumSize(QWindow& window) {
    window.setMinimumSize(designedMinimum.boundedTo(largestSize(*window.screen())));
}

} // namespace

LumvaleWindow::LumvaleWindow(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                             platform::PhotoLibrary photos) {
    new ThumbnailLoader(disk, photos, executor, &m_engine);
    new FileActions(disk, &m_engine);
    new ScreenModels(std::move(disk), history, std::move(executor), std::move(photos), &m_engine);
    ModalAccessibility::install();
    QmlModules::load(m_engine, QStringLiteral("Main"));
    if (window()) {
        new InputFilter(window());
        new DigitRow(window());
        new CloseFilter(window());
        new ModalAccessibility(window());
        setMinimumSize(*window());
        QObject::connect(window(), &QWindow::screenChanged, window(), [this] { setMinimumSize(*window()); });
        window()->resize(window()->size().boundedTo(largestSize(*window()->screen())));
        window()->show();
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
    return QmlModules::window(m_engine);
}
