#pragma once

#include <atomic>
#include <cstdint>

namespace platform {

/// The progress of a long operation, and the request to stop it. Shared by the threads of the operation and
/// the interface: every member may be called from any thread.
class Progress {
public:
    Progress() = default;

    /// Creates the progress of a step that counts apart from the whole operation and is stopped with it.
    /// `whole` may be null, and must outlive this object.
    explicit Progress(const Progress* whole) : m_whole(whole) {}

    /// Counts what the operation has processed since the last beginPhase().
    void add(std::int64_t entries, std::int64_t bytes) {
        m_entries.fetch_add(entries, std::memory_order_relaxed);
        m_bytes.fetch_add(bytes, std::memory_order_relaxed);
    }
    std::int64_t entries() const { return m_entries.load(std::memory_order_relaxed); }
    std::int64_t bytes() const { return m_bytes.load(std::memory_order_relaxed); }

    /// Sets the counters to zero and the number of entries that the next phase will process; 0 if unknown.
    void beginPhase(std::int64_t totalEntries) {
        m_entries.store(0, std::memory_order_relaxed);
        m_bytes.store(0, std::memory_order_relaxed);
        m_totalEntries.store(totalEntries, std::memory_order_relaxed);
    }
    std::int64_t totalEntries() const { return m_totalEntries.load(std::memory_order_relaxed); }

    /// Counts folders that were left out because the process or the system had no file descriptors left, over
    /// all phases.
    void addUnreadFolders(std::int64_t folders) {
        m_unreadFolders.fetch_add(folders, std::memory_order_relaxed);
    }
    std::int64_t unreadFolders() const { return m_unreadFolders.load(std::memory_order_relaxed); }

    /// Asks the operation to return as soon as possible with what it has done so far. Cannot be taken back.
    void stop() { m_isStopped.store(true, std::memory_order_relaxed); }
    bool isStopped() const {
        return m_isStopped.load(std::memory_order_relaxed) || (m_whole && m_whole->isStopped());
    }

private:
    const Progress* m_whole = nullptr;
    std::atomic<std::int64_t> m_entries = 0;
    std::atomic<std::int64_t> m_bytes = 0;
    std::atomic<std::int64_t> m_totalEntries = 0;
    std::atomic<std::int64_t> m_unreadFolders = 0;
    std::atomic<bool> m_isStopped = false;
};

/// Returns whether an operation is to stop. `progress` may be null.
inline bool isStopped(const Progress* progress) {
    return progress && progress->isStopped();
}

} // namespace platform
