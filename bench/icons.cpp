#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/models/uninstall_view_model.h"
#include "bench/measures.h"
#include "tests/support/temporary_disk.h"
#include "tools/sample_disk/app_icon.h"
#include "ui/shell/lumvale_window.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <optional>
#include <string>
#include <utility>

// Measures the list of applications while it scrolls through hundreds of them whose icons are not cached, and
// the same list of applications without icons. Runs of both are interleaved, so that other load on the
// machine affects both. With QT_SCALE_FACTOR=2 the icons have four times as many pixels.

namespace {

constexpr int appCount = 300;
constexpr int rounds = 5;

void fillApplications(const TemporaryDisk& disk, bool haveIcons) {
    constexpr sample_disk::IconFormat formats[] = {
        sample_disk::IconFormat::png, sample_disk::IconFormat::argb, sample_disk::IconFormat::rgb};
    for (int i = 0; i < appCount; ++i) {
        const std::string name = "App " + std::to_string(i);
        const std::string contents = "/Applications/" + name + ".app/Contents/";
        disk.write(contents + "Info.plist",
                   "<plist><dict><key>CFBundleName</key><string>" + name + "</string>"
                       + (haveIcons ? "<key>CFBundleIconFile</key><string>icon</string>" : "")
                       + "</dict></plist>");
        if (haveIcons)
            disk.write(contents + "Resources/icon.icns",
                       sample_disk::iconFile(name.substr(4), formats[i % std::size(formats)]));
    }
}

class Screen {
public:
    explicit Screen(bool haveIcons) : m_haveIcons(haveIcons) {
        fillApplications(m_disk, haveIcons);
        m_history.emplace(m_disk.disk());
        m_lumvale.emplace(m_disk.disk(), *m_history, qtExecutor(), m_disk.disk());
        forEachVisible(*window().contentItem(), "tab_uninstall", [](const QQuickItem& item) {
            QMetaObject::invokeMethod(const_cast<QQuickItem*>(&item), "clicked");
        });
        runUntilFrame(window(), [this] {
            const auto* model = window().findChild<UninstallViewModel*>();
            return model && model->hasApps() && !model->isLoadingApps() && list();
        });
        window().hide();
    }

    /// Scrolls through the whole list by `points` in each frame, with an empty cache.
    void scroll(double points) {
        window().show();
        QQuickItem* const moved = list();
        QMetaObject::invokeMethod(moved, "positionViewAtBeginning");
        runUntilFrame(window(), [] { return true; });
        ThumbnailLoader::create(qmlEngine(moved))->clear();
        const double path = moved->property("contentHeight").toDouble() - moved->height();
        const Frames measured = framesWhile(window(), static_cast<int>(path / points), [this, moved, points] {
            moved->setProperty("contentY", moved->property("contentY").toDouble() + points);
            const int rows = count("row");
            m_rows += rows;
            m_placeholders += count("iconPlaceholder");
        });
        m_frames.interfaceThread.insert(m_frames.interfaceThread.end(), measured.interfaceThread.begin(),
                                        measured.interfaceThread.end());
        m_frames.wall.insert(m_frames.wall.end(), measured.wall.begin(), measured.wall.end());
        m_frames.processor += measured.processor / rounds;
        if (m_haveIcons && count("iconPlaceholder") > 0)
            runUntilFrame(window(), [this] { return count("iconPlaceholder") == 0; });
        window().hide();
    }

    void print(const char* what) {
        std::printf("| %s, %s icons |", what, m_haveIcons ? "with" : "without");
        for (const auto& times : {m_frames.interfaceThread, m_frames.wall})
            std::printf(" %.1f | %.1f | %.1f |", median(times), quantile(times, 0.95), quantile(times, 1));
        std::printf(" %.1f | %.0f | %.0f |\n", m_frames.processor,
                    100 - 100.0 * m_placeholders / std::max(m_rows, 1), residentMegabytes());
        m_frames = {};
        m_rows = m_placeholders = 0;
    }

private:
    QQuickWindow& window() const { return *m_lumvale->window(); }
    QQuickItem* list() const {
        QQuickItem* found = nullptr;
        forEachVisible(*window().contentItem(), "appsList",
                       [&](const QQuickItem& item) { found = const_cast<QQuickItem*>(&item); });
        return found;
    }
    int count(const char* name) const {
        int count = 0;
        forEachVisible(*window().contentItem(), name, [&](const QQuickItem&) { ++count; });
        return count;
    }

    TemporaryDisk m_disk;
    bool m_haveIcons;
    std::optional<HistoryStore> m_history;
    std::optional<LumvaleWindow> m_lumvale;
    Frames m_frames{};
    int m_rows = 0;         ///< drawn so far, counted in every frame
    int m_placeholders = 0; ///< of them still without an icon
};

} // namespace

int main(int argc, char** argv) {
    // Qt delays repaints where the display has no vertical synchronization; the delay would be measured.
    qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setOrganizationName("Lumvale Bench");
    const QTemporaryDir settings;
    welcomeBefore(settings.path());
    Screen without(false);
    Screen with(true);
    std::printf("| 60 frames a second | interface thread, ms of CPU: median | 95 %% | most | "
                "until it is seen, wall ms: median | 95 %% | most | all CPU ms a frame | "
                "%% of rows with an icon | memory MB |\n"
                "|---|---:|---:|---:|---:|---:|---:|---:|---:|---:|\n");
    for (const auto& [name, points] : {std::pair("2,000 points a second", 33.3), {"a row a frame", 48.0}}) {
        for (int round = 0; round < rounds; ++round)
            for (Screen* screen : {&without, &with})
                screen->scroll(points);
        without.print(name);
        with.print(name);
        std::fflush(stdout);
    }
}
