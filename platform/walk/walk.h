#pragma once

#include "platform/base/progress.h"
#include "platform/files/attributes.h"
#include "platform/files/disk.h"
#include "platform/files/folder.h"

#include <concepts>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// A parallel walk over trees of folders.
///
/// Each worker thread has a stack of folders to read. A busy worker hands the older half of its stack to an
/// idle one through an atomic slot, without locks. A folder is opened relative to an open ancestor and never
/// through a symbolic link, so that a tree of any depth needs a bounded number of descriptors and the walk
/// can't leave it.
namespace platform {

namespace detail {
class WalkWorker;
}

/// An entry found by the walk. Valid only during the visit.
struct WalkEntry {
    std::size_t root = 0; ///< index of the root that it is below
    std::string_view name;
    bool isHidden = false;
    EntryType type = EntryType::other;
    std::int64_t sizeBytes = 0; ///< of files and symbolic links; otherwise 0
    Date modified;              ///< of files and symbolic links only
    int folder = -1;            ///< descriptor of its parent folder

    /// Builds and returns the path on the disk.
    std::string path() const;

    const detail::WalkWorker* worker = nullptr; ///< for path()
};

/// A visitor's answer: walk the entries of this folder, or skip them. Ignored for other entries.
enum class Descend { yes, no };

/// A visitor is copied for each thread; the copies are merged when the walk ends.
template <class V>
concept WalkVisitor = std::copyable<V> && requires(V visitor, V other, const WalkEntry& entry) {
    { visitor.visit(entry) } -> std::same_as<Descend>;
    visitor.merge(std::move(other));
};

/// Opens the folder at a root's path for reading. Fails with an error of the POSIX domain. Called from any
/// thread of the walk, and again whenever a root that was closed is needed.
using RootOpener = std::function<Result<Descriptor>(const std::string& root)>;

/// Returns an opener of roots on the disk, which refuses a root that is a symbolic link.
RootOpener rootsOn(const Disk& disk);

namespace detail {
void walk(const RootOpener& openRoot, std::span<const std::string> roots, Hidden hidden, Progress* progress,
          unsigned workers, const std::function<Descend(unsigned worker, const WalkEntry&)>& visit);
}

/// Returns the default number of threads of a walk, which can be 1 to 64: one per core, but at least 4, since
/// threads wait for the disk, and at most 8, since more are slower on a cold disk.
unsigned defaultWalkWorkers();

/// Visits every entry below the roots once, in unspecified order, and returns the merged visitor. The roots
/// themselves aren't visited. Symbolic links are visited but never followed, not even as roots. Folders that
/// can't be read or have vanished are skipped. Mount points are crossed. `Hidden::skip` leaves out hidden
/// entries and everything below them. Blocks until done, and has at most about 128 descriptors open.
///
/// If no descriptors are left (EMFILE, ENFILE), goes on with a few per thread and waits for others to be
/// closed, at most half a second in all; folders that still can't be opened are skipped and counted in
/// `progress` as unread.
///
/// Counts visited entries and their bytes in `progress`, which may be null. When that is stopped, returns
/// soon after, with some entries not visited.
template <WalkVisitor V>
V walk(const RootOpener& openRoot, std::span<const std::string> roots, Hidden hidden, V visitor,
       Progress* progress = nullptr, unsigned workers = defaultWalkWorkers()) {
    std::vector<V> visitors(workers, visitor);
    detail::walk(openRoot, roots, hidden, progress, workers,
                 [&](unsigned worker, const WalkEntry& entry) { return visitors[worker].visit(entry); });
    for (unsigned i = 1; i < workers; ++i)
        visitors[0].merge(std::move(visitors[i]));
    return std::move(visitors[0]);
}

template <WalkVisitor V>
V walk(const Disk& disk, std::span<const std::string> roots, Hidden hidden, V visitor,
       Progress* progress = nullptr, unsigned workers = defaultWalkWorkers()) {
    return walk(rootsOn(disk), roots, hidden, std::move(visitor), progress, workers);
}

/// Returns the size in bytes of every path, in the same order: for a folder the sum of the lengths of all
/// files and symbolic links below it that aren't hidden, for a file or a link to one its own length. 0 for
/// anything else, and for what is missing or unreadable. Sums are clamped to the largest value. Counts the
/// paths and the entries below them in `progress`, which may be null, with `counted` the hidden ones too; the
/// sizes are incomplete if that is stopped.
std::vector<std::int64_t> measure(const Disk& disk, std::span<const std::string> paths,
                                  Progress* progress = nullptr, Hidden counted = Hidden::skip,
                                  unsigned workers = defaultWalkWorkers());

} // namespace platform
