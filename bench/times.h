#pragma once

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <vector>

#include <sys/resource.h>

/// Times in milliseconds, shared by the benchmarks.

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

/// Returns the wall time since a moment.
inline double millisecondsSince(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
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
