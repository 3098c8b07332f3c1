#pragma once

#include "platform/files/descriptor.h"
#include "platform/files/folder_reader.h"
#include "platform/walk/walk.h"

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <thread>
#include <vector>

/// The inside of the walk: its workers, and what they share.
namespace platform::detail {

/// How many folders may stay open while the folders below them wait, over all workers.
class OpenFolderBudget {
public:
    /// Takes one out of the budget unless no more than `reserve` are left.
    bool take(int reserve);
    void giveBack() { m_left.fetch_add(1, std::memory_order_relaxed); }

private:
    std::atomic<int> m_left = 64;
};

/// A folder kept open out of the budget, or none.
class KeptFolder {
public:
    KeptFolder() = default;
    KeptFolder(Descriptor folder, OpenFolderBudget& budget)
        : m_folder(std::move(folder)), m_budget(&budget) {}
    KeptFolder(KeptFolder&&) noexcept = default;
    KeptFolder& operator=(KeptFolder&& other) noexcept {
        std::swap(m_folder, other.m_folder);
        std::swap(m_budget, other.m_budget);
        return *this;
    }
    ~KeptFolder() {
        if (m_folder)
            m_budget->giveBack();
    }

    explicit operator bool() const { return static_cast<bool>(m_folder); }
    int number() const { return m_folder.number(); }

private:
    Descriptor m_folder;
    OpenFolderBudget* m_budget = nullptr;
};

/// A folder from which those below are reached: a root, or a folder far below the anchor above it.
struct Anchor {
    std::size_t root = 0;
    std::shared_ptr<const Anchor> above; ///< none above a root
    std::string path;                    ///< from the anchor above
    KeptFolder folder;                   ///< when not kept, reached again from the anchor above
};

/// A folder that was read and has folders below it that were not.
struct Branch {
    std::shared_ptr<const Anchor> anchor;
    std::string path;  ///< from the anchor; empty for the anchor itself
    KeptFolder folder; ///< when not kept, reached again from the anchor
    std::string names; ///< of the folders to read, each ended by a NUL; the last one is next
};

class WalkWorker;

/// What the workers of one walk share.
struct SharedWalk {
    const RootOpener& openRoot;
    std::span<const std::string> roots;
    Hidden hidden;
    const std::function<Descend(unsigned worker, const WalkEntry&)>& visit;

    std::atomic<std::size_t> nextRoot = 0;
    OpenFolderBudget budget = {};
    std::atomic<std::uint64_t> idle = 0; ///< a bit for each worker that has nothing to do
    std::uint64_t everyone = 0;
    std::vector<std::unique_ptr<WalkWorker>> workers = {};
};

/// Reads folders one after the other, those found last first.
class WalkWorker {
public:
    WalkWorker(SharedWalk& walk, unsigned index) : m_walk(walk), m_index(index), m_isRunning(index == 0) {}

    /// Works until nothing is left for any worker.
    void run();

    /// Waits for the thread that the worker was given, if any.
    void join();

    /// The whole path on the disk of the folder that is being read.
    std::string folderPath() const;

private:
    enum class Handover { none, work, end };

    bool readNext();
    bool readNextRoot();
    void readNextFolder();
    void readEntries(const Descriptor& folder);
    Descriptor openNext(const Branch& branch, const char* name);
    Descriptor reopen(const Anchor& anchor) const;
    Branch makeBranch(std::shared_ptr<const Anchor> anchor, Descriptor folder);
    KeptFolder keepOpen(Descriptor& folder, int reserve); ///< takes it, or leaves it alone

    void shareWork();
    bool hasWorkToShare() const;
    std::vector<Branch> takeOlderHalf();
    bool accept(std::vector<Branch>& work);
    bool waitForWork();
    std::uint64_t bit() const { return std::uint64_t{1} << m_index; }

    SharedWalk& m_walk;
    const unsigned m_index;
    bool m_isRunning; ///< the first one on the caller's thread, the others once they were handed work
    std::thread m_thread;
    std::vector<Branch> m_branches;
    FolderReader m_reader;

    /// The last anchor that had to be reopened: many folders in a row are reached from it.
    std::shared_ptr<const Anchor> m_reopenedAnchor;
    Descriptor m_reopenedFolder;

    std::size_t m_entriesSeen = 0;

    // The folder that is being read.
    std::size_t m_root = 0;
    const Anchor* m_anchor = nullptr; ///< none: it is the root
    std::string m_path;               ///< from the anchor
    std::string m_names;              ///< of the folders found in it

    /// Filled by whoever took this worker's idle bit away, and by nobody else.
    std::vector<Branch> m_handedOver;
    std::atomic<Handover> m_handover = Handover::none;
};

} // namespace platform::detail
