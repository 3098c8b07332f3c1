#pragma once

#include <functional>

namespace platform {

/// Runs jobs asynchronously. Both functions may be called from any thread and return at once.
struct Executor {
    using Job = std::function<void()>;
    std::function<void(Job)> background;      ///< runs a job concurrently with others
    std::function<void(Job)> interfaceThread; ///< runs a job on the interface thread, in the order of calls

    /// Sets and returns the default executor of all operations. It is set once, before any thread starts;
    /// setting it twice, or reading it before it was set, aborts the program.
    static void setCurrent(Executor executor);
    static const Executor& current();
};

} // namespace platform
