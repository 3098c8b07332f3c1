#pragma once

#include "app/settings.h"
#include "bench/times.h"

#include <QEventLoop>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSettings>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <thread>
#include <vector>

#include <unistd.h>

/// Measurements shared by the benchmarks of the window.

constexpr int framesBefore = 20; ///< not measured: they create textures and shaders
constexpr int framesMeasured = 90;

/// Stores the settings in this folder and marks the welcome dialog as seen.
inline void welcomeBefore(const QString& folder) {
    Settings::useFolder(folder);
    QSettings().setValue("didOnboard", true);
}

/// Runs the event loop until a frame was swapped and `holds` returns true.
inline void runUntilFrame(QQuickWindow& window, const std::function<bool()>& holds) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        if (holds())
            loop.quit();
    });
    loop.exec();
}

/// Returns the CPU milliseconds per frame of a window that animates every frame.
inline double processorPerFrame(QQuickWindow& window) {
    window.show();
    int frame = 0;
    runUntilFrame(window, [&] { return ++frame == framesBefore; });
    const double start = processorMilliseconds();
    runUntilFrame(window, [&] { return ++frame == framesBefore + framesMeasured; });
    const double end = processorMilliseconds();
    window.hide();
    return (end - start) / framesMeasured;
}

/// Costs of consecutive frames in milliseconds.
struct Frames {
    std::vector<double> interfaceThread; ///< CPU time of the interface thread, per frame
    std::vector<double> wall;            ///< from the change to the swapped frame, per frame
    double processor;                    ///< average CPU time of all threads per frame, including pauses
};

/// Calls `move` 60 times a second, or less often if frames take longer, and measures the frames.
inline Frames framesWhile(QQuickWindow& window, int count, const std::function<void()>& move) {
    using namespace std::chrono;
    constexpr auto interval = microseconds(16'667);
    Frames frames{};
    const double before = processorMilliseconds();
    auto turn = steady_clock::now();
    for (int i = 0; i < count; ++i) {
        // Events wait during the pause, as they do while a display delays a frame.
        std::this_thread::sleep_until(turn);
        const auto start = steady_clock::now();
        const double threadBefore = threadMilliseconds();
        move();
        runUntilFrame(window, [] { return true; });
        frames.interfaceThread.push_back(threadMilliseconds() - threadBefore);
        frames.wall.push_back(duration<double, std::milli>(steady_clock::now() - start).count());
        turn = std::max(turn + interval, steady_clock::now());
    }
    frames.processor = (processorMilliseconds() - before) / count;
    return frames;
}

/// Reads /proc.
inline double residentMegabytes() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return static_cast<double>(pages) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// Calls `visit` for the visible items with this object name at or below `item`.
template <class Visit>
void forEachVisible(const QQuickItem& item, const char* name, Visit visit) {
    if (!item.isVisible())
        return;
    if (item.objectName() == QLatin1String(name))
        visit(item);
    for (const QQuickItem* child : item.childItems())
        forEachVisible(*child, name, visit);
}
