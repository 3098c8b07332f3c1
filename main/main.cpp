#include "app/history/history_store.h"
#include "app/models/background.h"
#include "platform/disk.h"
#include "ui/shell/lumvale_window.h"

#include <QGuiApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>

namespace {

/// What the environment says, unless it says nothing.
std::optional<std::string> environment(const char* name) {
    const char* value = std::getenv(name);
    return value && *value ? std::optional<std::string>(value) : std::nullopt;
}

} // namespace

int main(int argc, char* argv[]) {
    const std::string root = environment("LUMVALE_DISK").value_or("/");
    const std::string home = environment("LUMVALE_HOME").value_or(environment("HOME").value_or("/"));
    auto disk = platform::Disk::open(root, home, environment("LUMVALE_USER_CACHE"));
    if (!disk) {
        std::fprintf(stderr, "lumvale: no disk at %s with the home %s: %s\n", root.c_str(), home.c_str(),
                     disk.error().description.c_str());
        return 2;
    }
    platform::Disk::setCurrent(std::move(*disk));

    QGuiApplication application(argc, argv);
    QGuiApplication::setOrganizationName(QStringLiteral("Lumvale"));
    QGuiApplication::setApplicationName(QStringLiteral("Lumvale"));

    const LumvaleWindow window(platform::Disk::current(), HistoryStore::shared(), qtExecutor());
    if (!window.window())
        return EXIT_FAILURE;
    const int status = QGuiApplication::exec();
    // A scan may still be under way. It only reads, and nobody waits for it any more: the user who closes the
    // window shall not have to either.
    std::quick_exit(status);
}
