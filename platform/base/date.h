#pragma once

#include <chrono>

namespace platform {

/// A point in time in floating-point seconds since 1970, which cover every time stamp that a file can have.
using Date = std::chrono::sys_time<std::chrono::duration<double>>;

inline Date now() {
    return std::chrono::system_clock::now();
}

inline constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

} // namespace platform
