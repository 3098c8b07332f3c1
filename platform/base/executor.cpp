#include "platform/base/executor.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

namespace platform {

namespace {

std::optional<Executor>& currentExecutor() {
    static std::optional<Executor> executor;
    return executor;
}

[[noreturn]] void endProgram(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::abort();
}

} // namespace

void Executor::setCurrent(Executor executor) {
    if (currentExecutor())
        endProgram("The current executor can be set only once.");
    currentExecutor() = std::move(executor);
}

const Executor& Executor::current() {
    if (!currentExecutor())
        endProgram("The current executor was not set.");
    return *currentExecutor();
}

} // namespace platform
