#pragma once

#include "platform/base/executor.h"

#include <algorithm>
#include <deque>

/// Runs what it is given when told to, so that a test stands between a request and its result.
class HandCranked {
public:
    platform::Executor executor() {
        return {.background = [this](platform::Executor::Job job) { m_background.push_back(std::move(job)); },
                .interfaceThread =
                    [this](platform::Executor::Job job) {
                        m_interface.push_back(std::move(job));
                    }};
    }

    void runBackground() { runAll(m_background); }
    void publish() { runAll(m_interface); }
    void run() {
        runBackground();
        publish();
    }

    /// Runs the background job that was sent last, and lets its result be seen.
    void runLast() {
        std::rotate(m_background.rbegin(), m_background.rbegin() + 1, m_background.rend());
        runOne(m_background);
        publish();
    }

    bool isIdle() const { return m_background.empty() && m_interface.empty(); }

private:
    static void runAll(std::deque<platform::Executor::Job>& jobs) {
        while (!jobs.empty())
            runOne(jobs);
    }

    static void runOne(std::deque<platform::Executor::Job>& jobs) {
        jobs.front()();
        jobs.pop_front();
    }

    std::deque<platform::Executor::Job> m_background; ///< first one next
    std::deque<platform::Executor::Job> m_interface;
};
