#include "platform/walk/walk_worker.h"

#include "platform/base/bytes.h"
#include "platform/files/path.h"
#include "platform/system/system.h"

#include <algorithm>
#include <bit>
#include <cerrno>
#include <chrono>
#include <climits>
#include <iterator>
#include <system_error>
#include <utility>

namespace platform::detail {

namespace {

/// In bytes; a folder with a longer path from its anchor becomes an anchor itself. Leaves room below the
/// system's limit for one more name, which on a Mac can have 255 characters of three bytes.
constexpr std::size_t maxPathFromAnchor = PATH_MAX - 3 * NAME_MAX - 2;

/// Descriptors of the budget that only anchors may use: all folders below a closed anchor cost more system
/// calls.
constexpr int reservedForAnchors = 32;

/// A smaller walk is faster without further threads.
constexpr std::size_t minEntriesBeforeSharing = 1000;

/// The progress is shared by all threads, so they report to it less often than they read entries.
constexpr std::int64_t entriesPerReport = 256;

/// Number of times to wait for descriptors, which other threads close when they have read a folder to its
/// end.
constexpr int maxWaits = 50;
constexpr std::chrono::milliseconds wait(10);

Result<Descriptor> openBelow(int folder, const char* path) {
    Descriptor found = system::openFolderBelow(folder, path);
    if (!found)
        return posixError(errno);
    return found;
}

std::string_view lastName(const std::string& names) {
    const std::size_t start = names.rfind('\0', names.size() - 2) + 1;
    return {names.data() + start, names.size() - start - 1};
}

bool holdsSeveral(const std::string& names) {
    return lastName(names).size() + 1 < names.size();
}

} // namespace

bool OpenFolderBudget::take(int reserve) {
    if (m_left.fetch_sub(1, std::memory_order_relaxed) > reserve)
        return true;
    giveBack();
    return false;
}

template <class Open>
Descriptor WalkWorker::opened(const Open& open) {
    Result<Descriptor> folder = open();
    const auto isShort = [&] {
        return !folder && isDescriptorShortage(folder.error()) && !isStopped();
    };
    if (isShort()) {
        m_walk.isShortOfDescriptors = true;
        closeKeptFolders();
        folder = open();
    }
    for (int waits = 0; isShort() && waits < maxWaits && !m_walk.hasWaitedInVain; ++waits) {
        std::this_thread::sleep_for(wait);
        folder = open();
    }
    if (isShort()) {
        m_walk.hasWaitedInVain = true;
        if (m_walk.progress)
            m_walk.progress->addUnreadFolders(1);
    }
    return folder ? std::move(*folder) : Descriptor();
}

void WalkWorker::run() {
    do {
        while (readNext())
            shareWork();
    } while (waitForWork());
}

void WalkWorker::join() {
    if (m_thread.joinable())
        m_thread.join();
}

void WalkWorker::report() {
    if (m_walk.progress)
        m_walk.progress->add(std::exchange(m_unreportedEntries, 0), std::exchange(m_unreportedBytes, 0));
}

bool WalkWorker::readNext() {
    if (isStopped()) {
        m_branches.clear();
        return false;
    }
    if (m_branches.empty())
        return readNextRoot();
    readNextFolder();
    return true;
}

bool WalkWorker::readNextRoot() {
    m_root = m_walk.nextRoot.fetch_add(1, std::memory_order_relaxed);
    if (m_root >= m_walk.roots.size())
        return false;
    m_anchor = nullptr;
    m_path.clear();
    if (Descriptor folder = opened([&] { return m_walk.openRoot(m_walk.roots[m_root]); })) {
        readEntries(folder);
        if (!m_names.empty())
            m_branches.push_back(makeBranch(nullptr, std::move(folder)));
    }
    return true;
}

void WalkWorker::readNextFolder() {
    Branch& branch = m_branches.back();
    const std::string_view name = lastName(branch.names);
    m_root = branch.anchor->root;
    m_anchor = branch.anchor.get();
    m_path = branch.path;
    if (!m_path.empty())
        m_path += '/';
    m_path += name;
    Descriptor folder = opened([&] { return openNext(branch, name.data()); });
    branch.names.resize(branch.names.size() - name.size() - 1);

    std::optional<Branch> found;
    if (folder) {
        readEntries(folder);
        if (!m_names.empty())
            found = makeBranch(branch.anchor, std::move(folder));
    }
    if (branch.names.empty())
        m_branches.pop_back();
    if (found)
        m_branches.push_back(std::move(*found));
}

void WalkWorker::readEntries(const Descriptor& folder) {
    m_names.clear();
    m_reader.start(folder.number());
    WalkEntry entry;
    entry.root = m_root;
    entry.folder = folder.number();
    entry.worker = this;
    while (const FolderEntry* found = isStopped() ? nullptr : m_reader.next()) {
        if (found->isHidden && m_walk.hidden == Hidden::skip)
            continue;
        ++m_entriesSeen;
        Attributes attributes{found->type, 0, {}};
        if (found->attributes) {
            attributes = *found->attributes;
        } else if (!found->typeIsKnown || found->type == EntryType::file || found->type == EntryType::link) {
            const std::optional<Attributes> read = system::attributesAt(folder.number(), found->name.data());
            if (!read) // removed since
                continue;
            attributes = *read;
        }
        entry.name = found->name;
        entry.isHidden = found->isHidden;
        entry.type = attributes.type;
        entry.sizeBytes = attributes.sizeBytes;
        entry.modified = attributes.modified;
        if (m_walk.visit(m_index, entry) == Descend::yes && entry.type == EntryType::folder)
            m_names.append(found->name).push_back('\0');
        m_unreportedBytes = addBytes(m_unreportedBytes, entry.sizeBytes);
        if (++m_unreportedEntries >= entriesPerReport)
            report();
    }
}

void WalkWorker::closeKeptFolders() {
    for (Branch& branch : m_branches)
        branch.folder = {};
    m_reopenedAnchor = nullptr;
    m_reopenedFolder = {};
}

Result<Descriptor> WalkWorker::openNext(const Branch& branch, const char* name) {
    if (branch.folder)
        return openBelow(branch.folder.number(), name);
    const Anchor& anchor = *branch.anchor;
    if (anchor.folder)
        return openBelow(anchor.folder.number(), m_path.c_str());
    if (m_reopenedAnchor != branch.anchor) {
        Result<Descriptor> folder = reopen(anchor);
        if (!folder)
            return folder;
        m_reopenedFolder = std::move(*folder);
        m_reopenedAnchor = branch.anchor;
    }
    return openBelow(m_reopenedFolder.number(), m_path.c_str());
}

Result<Descriptor> WalkWorker::reopen(const Anchor& anchor) const {
    if (!anchor.above)
        return m_walk.openRoot(m_walk.roots[anchor.root]);
    if (anchor.above->folder)
        return openBelow(anchor.above->folder.number(), anchor.path.c_str());
    const Result<Descriptor> above = reopen(*anchor.above);
    return above ? openBelow(above->number(), anchor.path.c_str()) : above.error();
}

Branch WalkWorker::makeBranch(std::shared_ptr<const Anchor> anchor, Descriptor folder) {
    if (anchor && m_path.size() <= maxPathFromAnchor)
        return {std::move(anchor), m_path, keepOpen(folder, reservedForAnchors), m_names};
    auto next =
        std::make_shared<const Anchor>(Anchor{m_root, std::move(anchor), m_path, keepOpen(folder, 0)});
    if (folder) { // not kept in the budget, but the folders below it are read next
        m_reopenedAnchor = next;
        m_reopenedFolder = std::move(folder);
    }
    return {std::move(next), {}, {}, m_names};
}

KeptFolder WalkWorker::keepOpen(Descriptor& folder, int reserve) {
    if (m_walk.isShortOfDescriptors || !m_walk.budget.take(reserve))
        return {};
    return {std::move(folder), m_walk.budget};
}

std::string WalkWorker::folderPath() const {
    std::vector<std::string_view> parts{m_path};
    for (const Anchor* anchor = m_anchor; anchor; anchor = anchor->above.get())
        parts.push_back(anchor->path);
    std::string path = standardized(m_walk.roots[m_root]);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (!part->empty())
            path = joined(path, *part);
    }
    return path;
}

void WalkWorker::shareWork() {
    if (m_entriesSeen < minEntriesBeforeSharing)
        return;
    const std::uint64_t idle = m_walk.idle.load(std::memory_order_relaxed);
    if (idle == 0 || !hasWorkToShare())
        return;
    const std::uint64_t taker = std::uint64_t{1} << std::countr_zero(idle);
    if ((m_walk.idle.fetch_and(~taker, std::memory_order_acq_rel) & taker) == 0)
        return; // another worker took it
    std::vector<Branch> work = takeOlderHalf();
    if (m_walk.workers[static_cast<std::size_t>(std::countr_zero(taker))]->accept(work))
        return;
    m_branches.insert(m_branches.begin(), std::move_iterator(work.begin()), std::move_iterator(work.end()));
    m_walk.idle.fetch_or(taker, std::memory_order_acq_rel);
}

bool WalkWorker::hasWorkToShare() const {
    return m_branches.size() > 1 || (m_branches.size() == 1 && holdsSeveral(m_branches.front().names))
           || m_walk.nextRoot.load(std::memory_order_relaxed) < m_walk.roots.size();
}

std::vector<Branch> WalkWorker::takeOlderHalf() {
    std::vector<Branch> half;
    if (m_branches.size() > 1) {
        const auto middle = m_branches.begin() + static_cast<std::ptrdiff_t>(m_branches.size() / 2);
        half.assign(std::move_iterator(m_branches.begin()), std::move_iterator(middle));
        m_branches.erase(m_branches.begin(), middle);
    } else if (m_branches.size() == 1 && holdsSeveral(m_branches.front().names)) {
        Branch& branch = m_branches.front();
        std::string& names = branch.names;
        std::size_t cut = names.find('\0', names.size() / 2) + 1;
        if (cut == names.size())
            cut = names.rfind('\0', names.size() - 2) + 1;
        half.push_back({branch.anchor, branch.path, {}, names.substr(0, cut)});
        names.erase(0, cut);
    }
    return half;
}

bool WalkWorker::accept(std::vector<Branch>& work) {
    if (m_isRunning) {
        m_handedOver = std::move(work);
        m_handover.store(Handover::work, std::memory_order_release);
        m_handover.notify_one();
        return true;
    }
    m_branches = std::move(work);
    m_isRunning = true; // set before the thread starts, which may be idle again before m_thread is assigned
    try {
        m_thread = std::thread(&WalkWorker::run, this);
        return true;
    } catch (const std::system_error&) { // no thread available: the caller keeps the work
        m_isRunning = false;
        work = std::move(m_branches);
        return false;
    }
}

bool WalkWorker::waitForWork() {
    m_handover.store(Handover::none, std::memory_order_relaxed);
    report();
    closeKeptFolders();
    if ((m_walk.idle.fetch_or(bit(), std::memory_order_acq_rel) | bit()) == m_walk.allWorkers) {
        for (const std::unique_ptr<WalkWorker>& worker : m_walk.workers) {
            worker->m_handover.store(Handover::end, std::memory_order_release);
            worker->m_handover.notify_one();
        }
        return false;
    }
    m_handover.wait(Handover::none, std::memory_order_acquire);
    if (m_handover.load(std::memory_order_relaxed) == Handover::end)
        return false;
    m_branches = std::move(m_handedOver);
    return true;
}

} // namespace platform::detail
