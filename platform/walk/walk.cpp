#include "platform/walk/walk.h"

#include "platform/base/bytes.h"
#include "platform/files/path.h"
#include "platform/system/system.h"
#include "platform/walk/walk_worker.h"

#include <algorithm>
#include <cerrno>
#include <thread>

namespace platform {

std::string WalkEntry::path() const {
    return joined(worker->folderPath(), name);
}

RootOpener rootsOn(const Disk& disk) {
    return [disk](const std::string& path) -> Result<Descriptor> {
        const Result<Place> place = disk.place(path);
        if (!place) // the disk's root has none, since it has no parent folder
            return disk.openFolder(path);
        Descriptor folder = system::openFolderBelow(place->folder.number(), place->name.c_str());
        if (!folder)
            return posixError(errno);
        return folder;
    };
}

unsigned defaultWalkWorkers() {
    static const unsigned workers = std::clamp(std::thread::hardware_concurrency(), 4U, 8U);
    return workers;
}

void detail::walk(const RootOpener& openRoot, std::span<const std::string> roots, Hidden hidden,
                  Progress* progress, unsigned workers,
                  const std::function<Descend(unsigned worker, const WalkEntry&)>& visit) {
    SharedWalk walk{openRoot, roots, hidden, progress, visit};
    for (unsigned index = 0; index < workers; ++index) {
        walk.workers.push_back(std::make_unique<WalkWorker>(walk, index));
        walk.allWorkers |= std::uint64_t{1} << index;
    }
    // The first worker runs on the caller's thread. The others start idle, and get a thread with their first
    // work.
    walk.idle = walk.allWorkers & ~std::uint64_t{1};
    walk.workers.front()->run();
    for (const std::unique_ptr<WalkWorker>& worker : walk.workers)
        worker->join();
}

namespace {

/// A visitor that adds up the bytes below each root, and leaves hidden folders to another walk.
struct Sums {
    std::vector<std::int64_t> bytes;
    std::vector<std::string> hiddenFolders = {};

    Descend visit(const WalkEntry& entry) {
        if (entry.isHidden) {
            if (entry.type == EntryType::folder)
                hiddenFolders.push_back(entry.path());
            return Descend::no;
        }
        bytes[entry.root] = addBytes(bytes[entry.root], entry.sizeBytes);
        return Descend::yes;
    }
    void merge(Sums other) {
        for (std::size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = addBytes(bytes[i], other.bytes[i]);
        hiddenFolders.insert(hiddenFolders.end(), other.hiddenFolders.begin(), other.hiddenFolders.end());
    }
};

/// A visitor that leaves the counting to the walk.
struct Nothing {
    static Descend visit(const WalkEntry&) { return Descend::yes; }
    static void merge(Nothing) {}
};

} // namespace

std::vector<std::int64_t> measure(const Disk& disk, std::span<const std::string> paths, Progress* progress,
                                  Hidden counted, unsigned workers) {
    std::vector<std::int64_t> sizes(paths.size());
    std::vector<std::string> folders;
    std::vector<std::size_t> indices; // of the folders among the paths
    for (std::size_t i = 0; i < paths.size() && !isStopped(progress); ++i) {
        const std::optional<Attributes> attributes = attributesOf(disk, paths[i]);
        // The walk also takes those without attributes, since it waits when no descriptors are left.
        if (!attributes || attributes->type == EntryType::folder) {
            folders.push_back(paths[i]);
            indices.push_back(i);
        } else if (attributes->type == EntryType::file || kindOf(disk, paths[i]) == Kind::file) {
            sizes[i] = attributes->sizeBytes;
        }
        if (progress)
            progress->add(1, sizes[i]);
    }
    const Sums sums =
        walk(disk, folders, counted, Sums{std::vector<std::int64_t>(folders.size())}, progress, workers);
    if (!sums.hiddenFolders.empty())
        walk(disk, sums.hiddenFolders, Hidden::include, Nothing(), progress, workers);
    for (std::size_t i = 0; i < folders.size(); ++i)
        sizes[indices[i]] = sums.bytes[i];
    return sizes;
}

} // namespace platform
