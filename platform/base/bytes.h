#pragma once

#include <cstdint>
#include <limits>

namespace platform {

/// Returns the sum of two sizes (both at least 0), clamped to the largest value instead of overflowing: the
/// lengths of sparse files can add up to more.
inline std::int64_t addBytes(std::int64_t a, std::int64_t b) {
    constexpr std::int64_t maxBytes = std::numeric_limits<std::int64_t>::max();
    return a > maxBytes - b ? maxBytes : a + b;
}

} // namespace platform
