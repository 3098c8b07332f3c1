#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/identity.h"
#include "app/settings.h"
#include "app/update/update_checker.h"
#include "main/command_line.h"
#include "main/desktop.h"
#include "main/motion_setting.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/files/mac_disks.h"
#include "ui/shell/disk_window.h"
#include "ui/shell/lumvale_window.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

namespace {

/// Returns the sample disk of ./run, if this program lies in its build folder.
std::optional<std::string> sampleDisk() {
    const QString folder = QGuiApplication::applicationDirPath() + QStringLiteral("/../../sample/");
    return QFile::exists(folder + QStringLiteral("finished"))
               ? std::optional(QFile::encodeName(folder + QStringLiteral("disk")).toStdString())
               : std::nullopt;
}

/// The windows of the program. At most one is open at a time.
class Windows {
public:
    /// Opens the main window on a disk. Returns false if that failed.
    bool open(const platform::Disk& disk) {
        platform::Disk::setCurrent(disk);
        UpdateChecker::startIfNeeded(
            qGuiApp, [this](const UpdateAlert& update) { m_main->announce(update, Desktop::bringToFront); });
        m_main.emplace(platform::Disk::current(), HistoryStore::shared(), platform::Executor::current(),
                       platform::Disk::current());
        return m_main->window() != nullptr;
    }

    /// Asks for a disk, then opens it. Returns false if the window that asks failed.
    bool ask() {
        m_chooser.emplace(platform::mountedMacDisks(), sampleDisk(), [this](const platform::Disk& disk) {
            if (m_main)
                return;
            if (!open(disk))
                QGuiApplication::exit(EXIT_FAILURE);
            // After the handler of the click that chose the disk.
            QMetaObject::invokeMethod(
                qGuiApp, [this] { m_chooser.reset(); }, Qt::QueuedConnection);
        });
        return m_chooser->window() != nullptr;
    }

private:
    std::optional<DiskWindow> m_chooser;
    std::optional<LumvaleWindow> m_main;
};

} // namespace

int main(int argc, char* argv[]) {
    const CommandLine::Start start = CommandLine::start(argc, argv);
    if (const auto* const exit = std::get_if<CommandLine::Exit>(&start)) {
        std::fputs(exit->text.c_str(), exit->status == 0 ? stdout : stderr);
        return exit->status;
    }

    // A cleaner should not create caches: by default Qt writes some to the user's cache folder.
    qputenv("QML_DISABLE_DISK_CACHE", "1");
    QGuiApplication::setAttribute(Qt::AA_DisableShaderDiskCache);

    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(Identity::name());
    QGuiApplication::setOrganizationDomain(Identity::domain());
    QGuiApplication::setApplicationName(Identity::name());
    QGuiApplication::setApplicationVersion(Identity::version());
    Settings::useFolderOfEnvironment();
    Desktop::setUp();
    MotionSetting::follow();

    platform::Executor::setCurrent(qtExecutor());
    Windows windows;
    const auto& disk = std::get<std::optional<platform::Disk>>(start);
    if (!(disk ? windows.open(*disk) : windows.ask()))
        return EXIT_FAILURE;
    const int status = QGuiApplication::exec();
    // Exits without waiting for background jobs: they only read, or write files atomically.
    std::_Exit(status);
}
