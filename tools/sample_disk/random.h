#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace SampleDisk {

/// A stream of numbers that depends on its seed and name only. The standard's distributions differ between
/// libraries, and the same seed must give the same disk everywhere.
class Random {
public:
    Random(std::uint64_t seed, std::string_view stream) : m_state(seed) {
        for (const char letter : stream)
            m_state = (m_state ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    }

    std::uint64_t next() { // splitmix64
        std::uint64_t mixed = m_state += 0x9e3779b97f4a7c15;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
        return mixed ^ (mixed >> 31);
    }

    int between(int low, int high) { ///< both included
        return low + static_cast<int>(next() % static_cast<std::uint64_t>(high - low + 1));
    }

    bool chance(int percent) { return between(1, 100) <= percent; }

    std::string hex(std::size_t digits) {
        constexpr std::string_view alphabet = "0123456789ABCDEF";
        std::string text;
        while (text.size() < digits)
            text += alphabet[next() % alphabet.size()];
        return text;
    }

    std::string uuid() { return hex(8) + '-' + hex(4) + '-' + hex(4) + '-' + hex(4) + '-' + hex(12); }

private:
    std::uint64_t m_state;
};

} // namespace SampleDisk
