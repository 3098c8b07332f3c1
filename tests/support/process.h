#pragma once

#include <cstddef>
#include <functional>

#include <sys/resource.h>

/// While it lives, the process may have this many descriptors more open than it has.
class DescriptorLimit {
public:
    explicit DescriptorLimit(std::size_t more);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit m_before{};
};

/// How many descriptors the process has open.
std::size_t openDescriptors();

/// What the work returns in a process of its own, 0 … 255; -1 where it ended otherwise.
int inAnotherProcess(const std::function<int()>& work);
