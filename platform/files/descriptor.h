#pragma once

#include <utility>

namespace platform {

/// Owns an open file descriptor and closes it.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    explicit operator bool() const { return m_number >= 0; }
    int number() const { return m_number; }

private:
    int m_number = -1;
};

} // namespace platform
