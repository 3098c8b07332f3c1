#include "tests/support/process.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

DescriptorLimit::DescriptorLimit(std::size_t more) {
    getrlimit(RLIMIT_NOFILE, &m_before);
    rlimit lower{0,
                 m_before.rlim_max}; // of the numbers, of which some below the highest open one may be free
    for (std::size_t free = 0; free < more; ++lower.rlim_cur)
        free += fcntl(static_cast<int>(lower.rlim_cur), F_GETFD) == -1 ? 1 : 0;
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
