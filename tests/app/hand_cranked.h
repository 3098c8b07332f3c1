#pragma once

#include "platform/base/executor.h"

#include <deque>

/// Queues jobs and runs them only when told to, so that a test can act between a request and its result.
class HandCranked {
public:
    platform::Executor executor() {
        return {[this](Job job) { m_background.push_back(std::move(job)); },
                [this](Job job) {
                    m_interface.push_back(std::move(job));
                }};
    }

    void runBackground() { runAll(m_background); }
    void publish() { runAll(m_interface); }
    void run() {
        runBackground();
        publish();
    }

    /// Runs all jobs and those that they start.
    void finish() {
        while (!isIdle())
            run();
    }

    /// Runs the newest background job before the others and publishes its result.
    void runLast() {
        m_background.back()();
        m_background.pop_back();
        publish();
    }

    bool isIdle() const { return m_background.empty() && m_interface.empty(); }

private:
    using Job = platform::Executor::Job;

    static void runAll(std::deque<Job>& jobs) {
        for (; !jobs.empty(); jobs.pop_front())
            jobs.front()();
    }

    std::deque<Job> m_background;
    std::deque<Job> m_interface;
};
