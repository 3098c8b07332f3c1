#include "platform/system/process.h"

#include "platform/system/system.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ; // declared by the program, says POSIX

namespace platform {

namespace {

/// Starts a child process with default signal handling, and with no open files of ours except standard output
/// and error.
class Spawner {
public:
    Spawner() {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        for (const int fixed : {SIGKILL, SIGSTOP}) // always have their default handling
            sigdelset(&all, fixed);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawn_file_actions_init(&m_files);
        m_error = posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        if (m_error == 0)
            m_error = system::inheritStandardOutput(m_attributes, m_files);
    }
    ~Spawner() {
        posix_spawn_file_actions_destroy(&m_files);
        posix_spawnattr_destroy(&m_attributes);
    }
    Spawner(const Spawner&) = delete;
    Spawner& operator=(const Spawner&) = delete;

    /// Returns the child's process ID, or -1 when it could not be started.
    pid_t spawn(char* const* words) const {
        pid_t child = -1;
        const bool isStarted =
            m_error == 0 && posix_spawn(&child, words[0], &m_files, &m_attributes, words, environ) == 0;
        return isStarted ? child : -1;
    }

private:
    posix_spawnattr_t m_attributes;
    posix_spawn_file_actions_t m_files;
    int m_error = 0;
};

int waitForExitStatus(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    constexpr int endedBySignal = 128;
    return WIFEXITED(status) ? WEXITSTATUS(status) : endedBySignal + WTERMSIG(status);
}

} // namespace

int runProgram(const std::string& executable, const std::vector<std::string>& arguments) {
    std::vector<std::string> texts{executable};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> words;
    for (std::string& text : texts) {
        // The system would truncate the argument at the NUL.
        if (text.find('\0') != std::string::npos)
            return -1;
        words.push_back(text.data());
    }
    words.push_back(nullptr);
    const pid_t child = Spawner().spawn(words.data());
    return child < 0 ? -1 : waitForExitStatus(child);
}

std::uint32_t userId() {
    return getuid();
}

} // namespace platform
