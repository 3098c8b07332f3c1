#pragma once

#include <chrono>
#include <ctime>

namespace platform {

/// A point in time in floating-point seconds since 1970, which cover every time stamp that a file can have.
using Date = std::chrono::sys_time<std::chrono::duration<double>>;

inline Date now() {
    return std::chrono::system_clock::now();
}

/// Returns the point in time of a time stamp of the file system.
inline Date date(const timespec& time) {
    return Date(std::chrono::duration<double>(static_cast<double>(time.tv_sec)
                                              + static_cast<double>(time.tv_nsec) / 1e9));
}

inline constexpr double secondsSince1970(Date date) {
    return date.time_since_epoch().count();
}

} // namespace platform
