#pragma once

#include <chrono>

namespace platform {

/// A point in time, with its fraction. Seconds in floating point reach every date that a file can bear.
using Date = std::chrono::sys_time<std::chrono::duration<double>>;

inline Date now() {
    return std::chrono::system_clock::now();
}

inline constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

} // namespace platform
