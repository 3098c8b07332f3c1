#include "platform/process.h"

#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

#include <fcntl.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

/// The status of a script in a shell, which gets the other words as its arguments.
int shell(const std::string& script, std::vector<std::string> words = {}) {
    words.insert(words.begin(), {"-c", script, "sh"});
    return platform::runProgram("/bin/sh", words);
}

/// While it lives, a signal is dealt with in this way.
class SignalAction {
public:
    SignalAction(int number, void (*handler)(int)) : m_number(number) {
        struct sigaction action {};
        action.sa_handler = handler;
        sigaction(number, &action, &m_before);
    }
    ~SignalAction() { sigaction(m_number, &m_before, nullptr); }
    SignalAction(const SignalAction&) = delete;
    SignalAction& operator=(const SignalAction&) = delete;

private:
    int m_number;
    struct sigaction m_before {};
};

} // namespace

TEST(Process, GivesHowAProgramEnded) {
    const std::pair<const char*, int> cases[] = {
        {"exit 0", 0}, {"exit 7", 7}, {"exit 255", 255}, {"kill -TERM $$", 143}, {"kill -KILL $$", 137}};
    const std::size_t before = openDescriptors();
    for (const auto& [script, status] : cases)
        EXPECT_EQ(shell(script), status) << script;
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
    EXPECT_EQ(errno, ECHILD);
}

TEST(Process, SaysWhatCouldNotBeStarted) {
    const TemporaryDisk disk;
    disk.write("/script", "exit 3\n"); // for a shell alone
    disk.write("/plain", "#!/bin/sh\n");
    disk.setMode("/script", 0755);
    for (const std::string& program : {disk.host("/missing"), disk.host("/"), disk.host("/script"),
                                       disk.host("/plain"), std::string("sh"), std::string()})
        EXPECT_EQ(platform::runProgram(program, {}), -1) << program;
    EXPECT_EQ(shell("exit 0", {std::string("a\0b", 3)}), -1);
    EXPECT_EQ(shell("exit 0", {std::string(8'000'000, 'x')}), -1);
}

TEST(Process, HandsOverEveryWordAsItIs) {
    const TemporaryDisk disk;
    const std::vector<std::string> words{"two words",   "",        "$(exit 3)",
                                         "`id`;&|*",    "\"'\\",   "-n",
                                         "line\nbreak", "caf\xE9", std::string(65'536, 'x')};
    std::vector<std::string> arguments{disk.host("/said")};
    arguments.insert(arguments.end(), words.begin(), words.end());
    EXPECT_EQ(shell(R"(to=$1; shift; printf '%s\0' "$@" >"$to")", arguments), 0);
    std::string expected;
    for (const std::string& word : words)
        expected += word + '\0';
    EXPECT_EQ(disk.read("/said"), expected);
}

TEST(Process, GivesAProgramNoneOfOurFilesAndNoneOfOurSignals) {
    const TemporaryDisk disk;
    disk.make("/open");
    const int leaked = open(disk.host("/open").c_str(), O_RDONLY); // and would be inherited
    EXPECT_EQ(shell("test ! -e /proc/$$/fd/$1 && test \"$(readlink /proc/$$/fd/0)\" = /dev/null",
                    {std::to_string(leaked)}),
              0);
    close(leaked);

    const SignalAction ignored(SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, &before);
    EXPECT_EQ(shell("kill -PIPE $$"), 128 + SIGPIPE);
    EXPECT_EQ(shell("kill -TERM $$"), 128 + SIGTERM);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(Process, WaitsThroughSignals) {
    static std::atomic<int> alarms = 0;
    const SignalAction counted(SIGALRM, [](int) { ++alarms; });
    const itimerval often{{0, 20'000}, {0, 20'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(shell("sleep 0.2; exit 5"), 5);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_GT(alarms, 0);

    // Where the system throws away how children end, it can't be known.
    const SignalAction unheard(SIGCHLD, SIG_IGN);
    EXPECT_EQ(shell("exit 5"), -1);
}

TEST(Process, RunsSeveralAtOnce) {
    std::atomic<int> wrong = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
        threads.emplace_back([&wrong, thread] {
            for (int i = 0; i < 10; ++i)
                wrong += shell("exit $1", {std::to_string(10 * thread + i)}) != 10 * thread + i ? 1 : 0;
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, 0);
}
