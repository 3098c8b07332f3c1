#include "app/execution/qt_executor.h"
#include "app/history/history_store.h"
#include "app/models/scan_items_model.h"
#include "app/models/scan_view_model.h"
#include "bench/measures.h"
#include "ui/shell/lumvale_window.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Measures the window's CPU time over all threads: per frame of its animations, and from the end of a scan to
// the first frame with some of 100,000 rows. Scenes are interleaved, so that other load on the machine
// affects all of them. Prints medians.

namespace {

constexpr int rowCount = 100'000;
constexpr int rounds = 7;

[[noreturn]] void fail(const QString& what) {
    std::fprintf(stderr, "bench-frames: %s\n", qPrintable(what));
    std::exit(EXIT_FAILURE);
}

std::unique_ptr<QObject> make(QQmlEngine& engine, const QByteArray& qml, const QVariantMap& properties = {}) {
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nimport Lumvale\nimport Lumvale.Style\n" + qml, QUrl());
    std::unique_ptr<QObject> object(component.createWithInitialProperties(properties));
    if (!object)
        fail(component.errorString());
    return object;
}

/// Scrolls a list for as long as it lives, about a row a frame.
std::unique_ptr<QObject> makeScroll(QQmlEngine& engine, QQuickItem* list) {
    return make(engine, "Clock { onTriggered: target.contentY += 48 }",
                {{"target", QVariant::fromValue(list)}});
}

/// Creates a home whose scan finds the number of rows to measure. The first row is so large that its tick
/// changes the displayed sum.
void fillHome(const std::filesystem::path& home) {
    const std::filesystem::path caches = home / "Library/Caches";
    std::filesystem::create_directories(caches);
    for (int i = 0; i < rowCount; ++i) {
        const std::filesystem::path cache = caches / ("com.example.application-" + std::to_string(i));
        std::ofstream(cache).close();
        const unsigned factor = static_cast<unsigned>(i) % 97 + 1;
        std::filesystem::resize_file(cache, i == 0 ? 4'000'000'000'000U : 1'234'567U * factor);
    }
}

/// The cleanup screen in the program's window, with a real result.
class Screen {
public:
    Screen(const platform::Disk& disk, HistoryStore& history)
        : m_lumvale(disk, history, executor(), disk),
          m_model(m_lumvale.window()->findChild<ScanViewModel*>()) {}

    QQuickWindow& window() const { return *m_lumvale.window(); }
    QQmlEngine& engine() const { return *qmlEngine(m_lumvale.window()); }
    QQuickItem* list() const { return m_lumvale.window()->findChild<QQuickItem*>("resultsList"); }

    ScanItemsModel* items() const { return m_model->items(); }

    /// Returns the cost from the model's result to the frame with the first rows.
    Cost firstRows() {
        m_model->runScan();
        runUntilFrame(window(), [this] { return m_model->hasResult() && !m_model->isScanning(); });
        if (list()->property("count").toInt() != rowCount || !list()->isVisible())
            fail("the list is not what was scanned");
        return {static_cast<double>(m_sinceHandedOver.nsecsElapsed()) / 1e6,
                processorMilliseconds() - m_processorBefore};
    }

    /// Returns the cost of toggling a row, up to the frame that shows it.
    Cost toggle() {
        QElapsedTimer timer;
        const auto* label = m_lumvale.window()->findChild<QQuickItem*>("selectionLabel");
        const QString before = label->property("text").toString();
        const double processorBefore = processorMilliseconds();
        timer.start();
        m_model->items()->toggle(0);
        const QString after = label->property("text").toString();
        if (before.section("·", 0, 0) == after.section("·", 0, 0)
            || before.section("·", 1) == after.section("·", 1))
            fail("count and size don't follow a toggle at once");
        runUntilFrame(window(), [] { return true; });
        return {static_cast<double>(timer.nsecsElapsed()) / 1e6, processorMilliseconds() - processorBefore};
    }

private:
    platform::Executor executor() {
        return {.background = qtExecutor().background,
                .interfaceThread = [this](platform::Executor::Job job) {
                    qtExecutor().interfaceThread([this, job = std::move(job)] {
                        m_sinceHandedOver.start();
                        m_processorBefore = processorMilliseconds();
                        job();
                    });
                }};
    }

    QElapsedTimer m_sinceHandedOver;
    double m_processorBefore = 0;
    LumvaleWindow m_lumvale;
    ScanViewModel* m_model;
};

struct Scene {
    const char* name;
    const char* content; ///< QML of a window; null for the program's window
};

// The names are printed in the table.
constexpr Scene scenes[] = {
    {"an empty window where a dot moves", R"(
        Rectangle {
            id: dot
            width: 4
            height: 4
            Clock { target: dot; onTriggered: dot.x = currentFrame % 100 }
        })"},
    {"the list while it scrolls, as large as in the window", R"(
        ResultsList { x: 24; y: 342; width: 992; height: 367; items: window.items })"},
    {"the list while it scrolls, filling the window", R"(
        ResultsList { anchors.fill: parent; items: window.items })"},
    {"the sign of a long wait", R"(
        GlowLoadingIndicator { anchors.centerIn: parent; label: 'Searching the disk' })"},
    {"a ring that turns", R"(
        Ring {
            id: ring
            anchors.centerIn: parent
            width: 42
            height: 42
            share: 0.72
            to: GCColor.glowViolet
            glow: GCColor.glowTeal
            Clock { target: ring; onTriggered: ring.rotation = currentFrame }
        })"},
    {"a glowing text", R"(
        PulsingTitle { anchors.centerIn: parent; title: 'Lumvale' })"},
    {"the whole cleanup screen while its list scrolls", nullptr},
};

void measureFrames(const Screen& screen) {
    struct Measured {
        std::unique_ptr<QObject> own;
        QQuickWindow* window;
        std::unique_ptr<QObject> scroll;
        std::vector<double> costs;
    };
    std::vector<Measured> all;
    for (const Scene& scene : scenes) {
        Measured& measured = all.emplace_back();
        if (scene.content)
            measured.own = make(screen.engine(),
                                "Window { id: window; width: 1040; height: 800; color: GCColor.bgBottom\n"
                                "property ScanItemsModel items\n"
                                    + QByteArray(scene.content) + "}",
                                {{"items", QVariant::fromValue(screen.items())}});
        measured.window = scene.content ? qobject_cast<QQuickWindow*>(measured.own.get()) : &screen.window();
        if (auto* list = measured.window->findChild<QQuickItem*>("resultsList"))
            measured.scroll = makeScroll(screen.engine(), list);
    }
    screen.window().hide();
    for (int round = 0; round < rounds; ++round)
        for (Measured& measured : all)
            measured.costs.push_back(processorPerFrame(*measured.window));

    const double floor = median(all.front().costs);
    std::printf("| what moves | CPU ms a frame | above the empty window |\n|---|---:|---:|\n");
    for (std::size_t i = 0; i < all.size(); ++i)
        std::printf("| %s | %.2f | %.2f |\n", scenes[i].name, median(all[i].costs),
                    median(all[i].costs) - floor);
}

void measureMoments(Screen& screen) {
    struct Moment {
        const char* name;
        Cost (Screen::*happens)();
        std::vector<double> wall;
        std::vector<double> processor;
    } moments[] = {
        {"from the result to the frame with the first rows", &Screen::firstRows, {}, {}},
        {"from a toggle to the frame with it, the count and the sum", &Screen::toggle, {}, {}},
    };
    for (int round = 0; round < rounds; ++round)
        for (Moment& moment : moments) {
            const Cost cost = (screen.*moment.happens)();
            moment.wall.push_back(cost.wall);
            moment.processor.push_back(cost.processor);
        }
    std::printf("| with 100,000 rows | wall ms | CPU ms |\n|---|---:|---:|\n");
    for (const Moment& moment : moments)
        std::printf("| %s | %.0f | %.0f |\n", moment.name, median(moment.wall), median(moment.processor));
}

} // namespace

int main(int argc, char** argv) {
    QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setOrganizationName("Lumvale Bench");
    const QTemporaryDir folder;
    welcomeBefore(folder.filePath("settings"));
    fillHome(folder.filePath("Users/me").toStdString());
    const platform::Result<platform::Disk> disk =
        platform::Disk::open(folder.path().toStdString(), "/Users/me");
    if (!disk)
        fail(QString::fromStdString(disk.error().description));

    HistoryStore history(*disk);
    Screen screen(*disk, history);
    measureMoments(screen);
    std::printf("\n");
    measureFrames(screen);
}
