#pragma once

#include <QEventLoop>
#include <QQuickWindow>

#include <algorithm>
#include <functional>
#include <vector>

#include <sys/resource.h>

/// What the benchmarks of the window have in common.

constexpr int framesBefore = 20; ///< textures and shaders are made in them
constexpr int framesMeasured = 90;

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

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
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
