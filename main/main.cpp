#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/identity.h"
#include "app/settings.h"
#include "app/update/update_checker.h"
#include "main/desktop.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "ui/shell/lumvale_window.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

int main(int argc, char* argv[]) {
    platform::Result<platform::Disk> disk = platform::Disk::ofEnvironment();
    if (!disk) {
        std::fprintf(stderr, "lumvale: %s\n", disk.error().description.c_str());
        return 2;
    }
    platform::Disk::setCurrent(std::move(*disk));

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

    platform::Executor::setCurrent(qtExecutor());
    std::optional<LumvaleWindow> window;
    UpdateChecker::startIfNeeded(
        &application, [&](const UpdateAlert& update) { window->announce(update, Desktop::bringToFront); });
    window.emplace(platform::Disk::current(), HistoryStore::shared(), platform::Executor::current(),
                   platform::Disk::current());
    if (!window->window())
        return EXIT_FAILURE;
    const int status = QGuiApplication::exec();
    // Exits without waiting for background jobs: they only read, or write files atomically.
    std::_Exit(status);
}
