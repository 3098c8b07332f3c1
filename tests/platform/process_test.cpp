#include "platform/system/process.h"

#include "tests/support/process.h"
#include "tests/support/temporary_disk.h"

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace {

/// Returns the exit status of a shell script, which gets the other words as its arguments.
int shell(const std::string& script, std::vector<std::string> words = {}) {
    words.insert(words.begin(), {"-c", script, "sh"});
    return platform::runProgram("/bin/sh", words);
}

} // namespace

TEST(RunProgram, ReturnsTheExitStatusOrTheSignal) {
    const TemporaryDisk disk;
    disk.write("/plain", "#!/bin/sh\n"); // not executable
    const std::size_t before = openDescriptors();
    for (const auto& [script, status] : {std::pair("exit 7", 7), {"exit 255", 255}, {"kill -TERM $$", 143}})
        EXPECT_EQ(shell(script), status) << script;
    for (const std::string& program : {disk.host("/missing"), disk.host("/plain"), std::string("sh")})
        EXPECT_EQ(platform::runProgram(program, {}), -1) << program;
    EXPECT_EQ(shell("exit 0", {std::string("a\0b", 3)}), -1);
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1) << "a child process is left";
}

TEST(RunProgram, PassesArgumentsUnchangedAndNoDescriptorsOrSignals) {
    const TemporaryDisk disk;
    std::vector<std::string> words{disk.host("/said")};
    std::string expected;
    for (const std::string word : {"two words", "", "$(exit 3)", "`id`;&|*", "\"'\\", "a\nb", "\xE9"}) {
        words.push_back(word);
        expected += word + '\0';
    }
    EXPECT_EQ(shell(R"(to=$1; shift; printf '%s\0' "$@" >"$to")", words), 0);
    EXPECT_EQ(disk.read("/said"), expected);

    const int inheritable = open("/etc/passwd", O_RDONLY);
    EXPECT_EQ(shell("test ! -e /dev/fd/$1", {std::to_string(inheritable)}), 0);
    close(inheritable);
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(shell("kill -PIPE $$"), 128 + SIGPIPE);
    signal(SIGPIPE, SIG_DFL);
}
