#pragma once

#include "app/settings.h"

#include <QEventLoop>
#include <QQuickWindow>
#include <QSettings>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

#include <sys/resource.h>

/// Measurements shared by the benchmarks of the window.

constexpr int framesBefore = 20; ///< not measured: they create textures and shaders
constexpr int framesMeasured = 90;

/// Stores the settings in this folder and marks the welcome dialog as seen.
inline void welcomeBefore(const QString& folder) {
    Settings::useFolder(folder);
    QSettings().setValue("didOnboard", true);
}

/// Wall and CPU time in milliseconds.
struct Cost {
    double wall;
    double processor;
};

/// Returns the CPU time of all threads of the process so far.
inline double processorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

/// Returns the CPU time of the calling thread so far.
inline double threadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Returns the quantile for a share from 0 (the smallest value) to 1 (the largest).
inline double quantile(std::vector<double> values, double share) {
    const auto place =
        values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

inline double median(const std::vector<double>& values) {
    return quantile(values, 0.5);
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
