#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace sample_disk {

/// A pseudo-random stream that depends on its seed and its name only. The distributions of the standard
/// library differ between implementations; the same seed must give the same disk on every system.
class Random {
public:
    Random(std::uint64_t seed, std::string_view stream);

    std::uint64_t next();
    int between(int low, int high); ///< both included
    bool chance(int percent);
    std::string hex(std::size_t digits); ///< upper case
    std::string uuid();

private:
    std::uint64_t m_state;
};

} // namespace sample_disk
