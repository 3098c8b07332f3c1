#pragma once

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

/// One parallel walk for everything that reads whole trees.
///
/// Folders wait on a stack per worker, last in, first out. A worker that runs dry is handed the older half of
/// a busy one's stack through an atomic slot; no lock is taken and nothing else is shared. A folder is opened
/// by name from an ancestor that is still open, one name at a time and never through a link, so a tree of any
/// depth is walked with a bounded number of descriptors and nothing leads out of it.
namespace platform {

namespace detail {
class WalkWorker;
}

/// An entry met by the walk. Valid only during the visit.
struct WalkEntry {
    std::size_t root = 0; ///< index of the root below which it lies
    std::string_view name;
    EntryType type = EntryType::other;
    std::int64_t sizeBytes = 0; ///< of files and links; otherwise 0
    Date modified;              ///< of files and links only
    int folder = -1;            ///< descriptor of the folder that holds it

    /// Its whole path on the disk, put together when asked for.
    std::string path() const;

    const detail::WalkWorker* worker = nullptr; ///< the walk's own
};

/// Whether the walk goes on below a folder. Of no meaning for other entries.
enum class Descend { yes, no };

/// One copy of the visitor works on each thread; at the end all are merged into one.
template <class V>
concept WalkVisitor = std::copyable<V> && requires(V visitor, V other, const WalkEntry& entry) {
    { visitor.visit(entry) } -> std::same_as<Descend>;
    visitor.merge(std::move(other));
};

/// Opens the folder at a root's path, at first and whenever the walk has to begin there again; none where
/// there is no folder. Called from any of the walk's threads.
using RootOpener = std::function<Descriptor(const std::string& root)>;

/// Opens roots on the disk, none that is itself a link.
RootOpener rootsOn(const Disk& disk);

namespace detail {
void walk(const RootOpener& openRoot, std::span<const std::string> roots, Hidden hidden, unsigned workers,
          const std::function<Descend(unsigned worker, const WalkEntry&)>& visit);
}

/// How many threads a walk takes unless told otherwise: 1 to 64.
inline constexpr unsigned defaultWalkWorkers = 4;

/// Visits every entry below the roots once, in no order; the roots themselves are not visited. A root that is
/// no folder, or a link to one, has nothing below it. Links are visited and never followed; folders that
/// cannot be read, or vanish, are passed over; mount points are crossed. Hidden entries are left out with all
/// that is below them where asked. Blocks until done; about 128 descriptors at most.
template <WalkVisitor V>
V walk(const RootOpener& openRoot, std::span<const std::string> roots, Hidden hidden, V visitor,
       unsigned workers = defaultWalkWorkers) {
    std::vector<V> visitors(workers, visitor);
    detail::walk(openRoot, roots, hidden, workers,
                 [&](unsigned worker, const WalkEntry& entry) { return visitors[worker].visit(entry); });
    for (unsigned i = 1; i < workers; ++i)
        visitors[0].merge(std::move(visitors[i]));
    return std::move(visitors[0]);
}

template <WalkVisitor V>
V walk(const Disk& disk, std::span<const std::string> roots, Hidden hidden, V visitor,
       unsigned workers = defaultWalkWorkers) {
    return walk(rootsOn(disk), roots, hidden, std::move(visitor), workers);
}

/// The bytes of each path, in their order: of a folder the lengths of all files and links below it that
/// aren't hidden, of anything else its own; 0 for what is missing, unreadable, a link to a folder or to
/// nothing. Sums stop at the largest value.
std::vector<std::int64_t> measure(const Disk& disk, std::span<const std::string> paths,
                                  unsigned workers = defaultWalkWorkers);

} // namespace platform
