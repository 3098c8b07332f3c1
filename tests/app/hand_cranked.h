#pragma once

#include "platform/base/executor.h"

#include <algorithm>
#include <deque>

/// Queues jobs and runs them only when told to, so that a test can act between a request and its result.
class HandCranked {
public:
    platform::Executor executor() {
        return {.background = [this](auto job) { m_background.push_back(std::move(job)); },
                .interfaceThread =
                    [this](auto job) {
                        m_interface.push_back(std::move(job));
                    }};
    }

    void runBackground() { runAll(m_background); }
    void publish() { runAll(m_interface); }
    void run() {
        runBackground();
        publish();
    }

    /// Runs the newest background job before the others and publishes its result.
    void runLast() {
        std::rotate(m_background.rbegin(), m_background.rbegin() + 1, m_background.rend());
        runOne(m_background);
        publish();
    }

    bool isIdle() const { return m_background.empty() && m_interface.empty(); }

private:
    using Jobs = std::deque<platform::Executor::Job>;

    static void runAll(Jobs& jobs) {
        while (!jobs.empty())
            runOne(jobs);
    }
    static void runOne(Jobs& jobs) {
        jobs.front()();
        jobs.pop_front();
    }

    Jobs m_background; ///< the next job first
    Jobs m_interface;
};
