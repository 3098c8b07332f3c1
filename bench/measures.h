#pragma once

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

/// What the benchmarks of the window have in common.

constexpr int framesBefore = 20; ///< textures and shaders are made in them
constexpr int framesMeasured = 90;

/// Keeps the settings in this folder, as they are after the first run: no welcome lies over the screens.
inline void welcomeBefore(const QString& folder) {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
    QSettings().setValue("didOnboard", true);
}

/// In milliseconds.
struct Cost {
    double wall;
    double processor;
};

/// Of all threads of the program, since it began.
inline double processorMilliseconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto milliseconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) * 1000 + static_cast<double>(time.tv_usec) / 1000;
    };
    return milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
}

/// Of the thread that asks.
inline double threadMilliseconds() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The value that such a share of the others lies below; of 1, the largest.
inline double quantile(std::vector<double> values, double share) {
    const auto place =
        values.begin() + static_cast<std::ptrdiff_t>(share * static_cast<double>(values.size() - 1));
    std::nth_element(values.begin(), place, values.end());
    return *place;
}

inline double median(const std::vector<double>& values) {
    return quantile(values, 0.5);
}

/// Runs the event loop until a frame is swapped after which this holds.
inline void runUntilFrame(QQuickWindow& window, const std::function<bool()>& holds) {
    QEventLoop loop;
    QObject::connect(&window, &QQuickWindow::frameSwapped, &loop, [&] {
        if (holds())
            loop.quit();
    });
    loop.exec();
}

/// Of a window where something moves in every frame.
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

/// Frames as they are shown one after the other, in milliseconds.
struct Frames {
    std::vector<double> interfaceThread; ///< of the processor, of each
    std::vector<double> wall;            ///< from the moment when something moves until that is seen, of each
    double processor;                    ///< all threads, also in between; on average
};

/// Moves something 60 times a second, or as often as can be.
inline Frames framesWhile(QQuickWindow& window, int count, const std::function<void()>& move) {
    using namespace std::chrono;
    constexpr auto interval = microseconds(16'667);
    Frames frames{};
    const double before = processorMilliseconds();
    auto turn = steady_clock::now();
    for (int i = 0; i < count; ++i) {
        // What comes meanwhile waits, as it does while a display holds a frame back.
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
