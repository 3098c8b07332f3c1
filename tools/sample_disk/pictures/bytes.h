#pragma once

#include <cstdint>
#include <string>

namespace SampleDisk {

/// Appends the lowest `count` bytes of a number, highest first.
inline void append(std::string& bytes, std::uint32_t number, int count) {
    while (--count >= 0)
        bytes += static_cast<char>(number >> (8 * count));
}

} // namespace SampleDisk
