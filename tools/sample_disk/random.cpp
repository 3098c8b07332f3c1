#include "tools/sample_disk/random.h"

namespace sample_disk {

Random::Random(std::uint64_t seed, std::string_view stream) : m_state(seed) {
    for (const char letter : stream) // the FNV-1a hash
        m_state = (m_state ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
}

std::uint64_t Random::next() { // SplitMix64
    std::uint64_t mixed = m_state += 0x9e3779b97f4a7c15;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111eb;
    return mixed ^ (mixed >> 31);
}

int Random::between(int low, int high) {
    return low + static_cast<int>(next() % static_cast<std::uint64_t>(high - low + 1));
}

bool Random::chance(int percent) {
    return between(1, 100) <= percent;
}

std::string Random::hex(std::size_t digits) {
    std::string text;
    while (text.size() < digits)
        text += "0123456789ABCDEF"[next() % 16];
    return text;
}

std::string Random::uuid() {
    return hex(8) + '-' + hex(4) + '-' + hex(4) + '-' + hex(4) + '-' + hex(12);
}

} // namespace sample_disk
