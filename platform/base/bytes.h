#pragma once

#include <cstdint>
#include <limits>

namespace platform {

/// The sum of two sizes (both at least 0), which stops at the largest value: sparse files can claim more than
/// any disk holds.
inline std::int64_t addBytes(std::int64_t a, std::int64_t b) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    return a > most - b ? most : a + b;
}

} // namespace platform
