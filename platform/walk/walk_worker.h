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

/// The implementation of the walk.
namespace platform::detail {

/// Limits how many folders all workers of a walk keep open for the folders below them. Thread-safe.
class OpenFolderBudget {
public:
    /// Takes one descriptor and returns true, or returns false if `reserve` or fewer are left.
    bool take(int reserve);
    void giveBack() { m_left.fetch_add(1, std::memory_order_relaxed); }

private:
    std::atomic<int> m_left = 64;
};

/// An open folder that counts against the budget, or none.
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

/// A folder relative to which folders below it are opened: a root, or a folder far below another anchor.
struct Anchor {
    std::size_t root = 0;
    std::shared_ptr<const Anchor> above; ///< null for a root
    std::string path;                    ///< relative to `above`
    KeptFolder folder;                   ///< if empty, it is reopened relative to `above`
};

/// A folder that was read, with child folders that are still to be read.
struct Branch {
    std::shared_ptr<const Anchor> anchor;
    std::string path;  ///< relative to the anchor; empty for the anchor itself
    KeptFolder folder; ///< if empty, its children are opened relative to the anchor
    std::string names; ///< of the folders to read, each followed by a NUL; the last one is next
};

class WalkWorker;

/// The state that all workers of one walk share.
struct SharedWalk {
    const RootOpener& openRoot;
    std::span<const std::string> roots;
    Hidden hidden;
    Progress* progress; ///< may be null
    const std::function<Descend(unsigned worker, const WalkEntry&)>& visit;

    std::atomic<std::size_t> nextRoot = 0;
    OpenFolderBudget budget = {};
    std::atomic<bool> isShortOfDescriptors = false; ///< no more folders are kept open
    std::atomic<bool> hasWaitedInVain = false;      ///< for descriptors
    std::atomic<std::uint64_t> idle = 0;            ///< a set bit for each idle worker
    std::uint64_t allWorkers = 0;                   ///< a set bit for each worker
    std::vector<std::unique_ptr<WalkWorker>> workers = {};
};

/// Reads folders depth first.
class WalkWorker {
public:
    WalkWorker(SharedWalk& walk, unsigned index) : m_walk(walk), m_index(index), m_isRunning(index == 0) {}

    /// Runs until all workers are idle.
    void run();

    /// Joins the worker's thread, if it has one.
    void join();

    /// Returns the path on the disk of the folder that is being read.
    std::string folderPath() const;

private:
    enum class Handover { none, work, end };

    /// Adds what was counted since the last report to the progress.
    void report();
    bool isStopped() const { return platform::isStopped(m_walk.progress); }
    bool readNext();
    bool readNextRoot();
    void readNextFolder();
    void readEntries(const Descriptor& folder);

    /// Returns the folder that `open` opens, or none. When no descriptors are left, closes the folders that
    /// this worker keeps open and tries again, and counts the folder as unread if that doesn't help.
    template <class Open>
    Descriptor opened(const Open& open);
    void closeKeptFolders();
    Result<Descriptor> openNext(const Branch& branch, const char* name);
    Result<Descriptor> reopen(const Anchor& anchor) const;
    Branch makeBranch(std::shared_ptr<const Anchor> anchor, Descriptor folder);
    KeptFolder keepOpen(Descriptor& folder, int reserve); ///< moves from `folder` only if the budget allows

    void shareWork();
    bool hasWorkToShare() const;
    std::vector<Branch> takeOlderHalf();
    bool accept(std::vector<Branch>& work);
    bool waitForWork();
    std::uint64_t bit() const { return std::uint64_t{1} << m_index; }

    SharedWalk& m_walk;
    const unsigned m_index;
    bool m_isRunning; ///< true for the first worker, and for others since they accepted work
    std::thread m_thread;
    std::vector<Branch> m_branches;
    FolderReader m_reader;

    /// The last anchor that was reopened, cached because the next folders are usually below it too.
    std::shared_ptr<const Anchor> m_reopenedAnchor;
    Descriptor m_reopenedFolder;

    std::size_t m_entriesSeen = 0;
    std::int64_t m_unreportedEntries = 0;
    std::int64_t m_unreportedBytes = 0;

    // The folder that is being read.
    std::size_t m_root = 0;
    const Anchor* m_anchor = nullptr; ///< null for a root
    std::string m_path;               ///< relative to the anchor
    std::string m_names;              ///< of the child folders found

    /// Written only by the worker that cleared this worker's idle bit.
    std::vector<Branch> m_handedOver;
    std::atomic<Handover> m_handover = Handover::none;
};

} // namespace platform::detail
