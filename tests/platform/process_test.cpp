#include "platform/system/process.h"

#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <atomic>
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

} // namespace

TEST(Process, GivesHowAProgramEnded) {
    const std::pair<const char*, int> cases[] = {
        {"exit 0", 0}, {"exit 7", 7}, {"exit 255", 255}, {"kill -TERM $$", 143}, {"kill -KILL $$", 137}};
    const std::size_t before = openDescriptors();
    for (const auto& [script, status] : cases)
        EXPECT_EQ(shell(script), status) << script;
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child was left";
}

TEST(Process, SaysWhatCouldNotBeStarted) {
    const TemporaryDisk disk;
    disk.write("/script", "exit 3\n"); // for a shell alone
    disk.setMode("/script", 0755);
    disk.write("/plain", "#!/bin/sh\n");
    for (const std::string& program : {disk.host("/missing"), disk.host("/"), disk.host("/script"),
                                       disk.host("/plain"), std::string("sh"), std::string()})
        EXPECT_EQ(platform::runProgram(program, {}), -1) << program;
    for (const std::string& word : {std::string("a\0b", 3), std::string(8'000'000, 'x')})
        EXPECT_EQ(shell("exit 0", {word}), -1);
}

TEST(Process, HandsOverEveryWordAsItIs) {
    const TemporaryDisk disk;
    std::vector<std::string> words{disk.host("/said")};
    std::string expected;
    for (const std::string word : {"two words", "", "$(exit 3)", "`id`;&|*", "\"'\\", "-n", "a\nb", "\xE9"}) {
        words.push_back(word);
        expected += word + '\0';
    }
    EXPECT_EQ(shell(R"(to=$1; shift; printf '%s\0' "$@" >"$to")", words), 0);
    EXPECT_EQ(disk.read("/said"), expected);
}

TEST(Process, GivesAProgramNoneOfOurFilesAndNoneOfOurSignals) {
    const int leaked = open("/etc/passwd", O_RDONLY); // and would be inherited
    EXPECT_EQ(shell("test ! -e /proc/$$/fd/$1 && test \"$(readlink /proc/$$/fd/0)\" = /dev/null",
                    {std::to_string(leaked)}),
              0);
    close(leaked);

    signal(SIGPIPE, SIG_IGN);
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
    EXPECT_EQ(shell("kill -PIPE $$"), 128 + SIGPIPE);
    EXPECT_EQ(shell("kill -TERM $$"), 128 + SIGTERM);
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
    signal(SIGPIPE, SIG_DFL);
}

TEST(Process, WaitsThroughSignals) {
    static std::atomic<int> alarms = 0;
    struct sigaction counted {}; // a wait that it interrupts isn't taken up again by itself
    counted.sa_handler = [](int) {
        ++alarms;
    };
    sigaction(SIGALRM, &counted, nullptr);
    const itimerval often{{0, 20'000}, {0, 20'000}};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(shell("sleep 0.2; exit 5"), 5);
    const itimerval never{};
    setitimer(ITIMER_REAL, &never, nullptr);
    EXPECT_GT(alarms, 0);

    // Where the system throws away how children end, it can't be known.
    signal(SIGCHLD, SIG_IGN);
    EXPECT_EQ(shell("exit 5"), -1);
    signal(SIGCHLD, SIG_DFL);
}

TEST(Process, RunsSeveralAtOnce) {
    std::atomic<int> right = 0;
    std::vector<std::jthread> threads;
    for (int status = 0; status < 20; ++status)
        threads.emplace_back(
            [&right, status] { right += shell("exit $1", {std::to_string(status)}) == status ? 1 : 0; });
    threads.clear();
    EXPECT_EQ(right, 20);
}
