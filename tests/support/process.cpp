#include "tests/support/process.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

#include <sys/wait.h>
#include <unistd.h>

DescriptorLimit::DescriptorLimit(std::size_t more) {
    getrlimit(RLIMIT_NOFILE, &m_before);
    const rlimit lower{openDescriptors() - 1 + more, m_before.rlim_max}; // without the one used to count them
    setrlimit(RLIMIT_NOFILE, &lower);
}

DescriptorLimit::~DescriptorLimit() {
    setrlimit(RLIMIT_NOFILE, &m_before);
}

std::size_t openDescriptors() {
    using std::filesystem::directory_iterator;
    return static_cast<std::size_t>(std::distance(directory_iterator("/dev/fd"), directory_iterator()));
}

bool runInShell(const std::string& command) {
    return std::system(("{ " + command + "; } 2>/dev/null").c_str()) == 0;
}

int inAnotherProcess(const std::function<int()>& work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
