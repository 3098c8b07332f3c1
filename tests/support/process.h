#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include <sys/resource.h>

/// Limits the number of descriptors that the process can open in addition to those open now.
class DescriptorLimit {
public:
    explicit DescriptorLimit(std::size_t more);
    ~DescriptorLimit();
    DescriptorLimit(const DescriptorLimit&) = delete;
    DescriptorLimit& operator=(const DescriptorLimit&) = delete;

private:
    rlimit m_before{};
};

/// Returns the number of descriptors that the process has open, including the one used to count them.
std::size_t openDescriptors();

/// Runs a command with the shell, as the real user, and returns whether it succeeded. Drops its error
/// messages.
bool runInShell(const std::string& command);

/// Runs the work in a child process and returns its result, 0 to 255, or -1 if the process crashed.
int inAnotherProcess(const std::function<int()>& work);
