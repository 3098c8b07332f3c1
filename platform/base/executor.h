#pragma once

#include <functional>

namespace platform {

/// Where work is sent. Both may be called from any thread and return at once.
struct Executor {
    using Job = std::function<void()>;
    std::function<void(Job)> background;      ///< runs beside others, for a user who waits
    std::function<void(Job)> interfaceThread; ///< runs on the interface thread, in the order of sending

    /// Where operations send their work unless they are given another. Set once, before any thread starts;
    /// setting it twice, or asking before it was set, ends the program.
    static void setCurrent(Executor executor);
    static const Executor& current();
};

} // namespace platform
