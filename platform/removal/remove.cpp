#include "platform/removal/remove.h"

#include "platform/files/folder_reader.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"
#include "platform/system/system.h"
#include "platform/walk/walk.h"

#include <cerrno>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace platform {

namespace {

constexpr int openForReading = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

/// Removes one entry with everything below it, without recursion.
///
/// The folders from the entry's parent down to the folder being emptied are levels. While a folder is read,
/// its files are removed and the names of its folders are stored as pending. Each pending folder becomes the
/// lowest level in turn, and is removed from its parent once it is empty. Only the lowest levels stay open; a
/// closed level is reopened as ".." of the level below it. Some file systems skip entries of a folder while
/// others are removed, so a folder that isn't empty is read again as long as a pass removes something.
class Removal {
public:
    Removal(Place entry, Progress* progress) : m_progress(progress) {
        m_pending.push_back(std::move(entry.name));
        m_levels.emplace_back(); // the entry's parent, which is neither read nor removed
        lowest().identity = system::identityOf(entry.folder.number()).value_or(system::Identity{});
        lowest().folder = std::move(entry.folder);
    }

    /// Returns 0 when the entry was removed, otherwise the host's errno of the first failure.
    int run() {
        if (!isStopped())
            remove(m_pending.back().c_str());
        while (m_levels.size() > 1 && !m_parentIsLost && !isStopped()) {
            if (m_pending.size() > m_levels.back().firstChild)
                remove(m_pending.back().c_str());
            else
                leave();
        }
        if (m_entryIsRemoved)
            return 0;
        return m_failure == 0 ? ECANCELED : m_failure;
    }

private:
    struct Level {
        Descriptor folder; ///< empty while the level is closed
        system::Identity identity;
        std::size_t firstChild = 0;  ///< index in m_pending of its first child folder
        int passes = 0;              ///< number of times that it was read
        bool progressed = false;     ///< the last pass removed something
        std::set<std::string> stuck; ///< child folders that can't be removed
    };

    /// Leaves some of the 128 descriptors of a removal to the disk and the caller.
    static constexpr std::size_t maxOpenLevels = 120;

    /// Ends the removal if a program keeps adding entries to a folder.
    static constexpr int maxPasses = 1000;

    Level& lowest() { return m_levels.back(); }

    bool isStopped() const { return platform::isStopped(m_progress); }

    void countRemoved() {
        lowest().progressed = true;
        if (m_progress)
            m_progress->add(1, 0);
    }

    /// Removes the entry with this name in the lowest level; a folder becomes the new lowest level instead.
    void remove(const char* name) {
        const int parent = lowest().folder.number();
        Descriptor folder(openat(parent, name, openForReading));
        if (!folder) {
            const int failure = errno;
            if (failure == ENOTDIR || failure == ELOOP)
                finish(unlinkat(parent, name, 0) == 0 ? 0 : errno);
            else
                finish(removeUnopened(name, failure));
            return;
        }
        const std::optional<system::Identity> identity = system::identityOf(folder.number());
        if (!identity || !identity->isOnSameMount(lowest().identity)) {
            finish(removeUnopened(name, EBUSY));
            return;
        }
        limitOpenLevels();
        m_levels.emplace_back();
        lowest().folder = std::move(folder);
        lowest().identity = *identity;
        lowest().firstChild = m_pending.size();
        read();
    }

    /// Removes a folder that can't be entered, in case it is empty. Returns 0 or the host's errno; if the
    /// folder isn't empty, returns `whyUnopened`.
    int removeUnopened(const char* name, int whyUnopened) {
        if (unlinkat(lowest().folder.number(), name, AT_REMOVEDIR) == 0)
            return 0;
        return errno == ENOTEMPTY || errno == EEXIST ? whyUnopened : errno;
    }

    /// Records the result for the last pending name, an entry of the lowest level.
    void finish(int failure) {
        const bool isEntryItself = m_levels.size() == 1;
        if (failure == 0) {
            countRemoved();
            m_entryIsRemoved = isEntryItself;
        } else if (isEntryItself || failure != ENOENT) {
            note(failure);
            lowest().stuck.insert(std::move(m_pending.back()));
        }
        m_pending.pop_back();
    }

    /// Keeps the first failure: later ones, such as ENOTEMPTY of a parent, follow from it.
    void note(int failure) {
        if (m_failure == 0)
            m_failure = failure;
    }

    /// Reads the lowest level, removes its files and makes its folders pending.
    void read() {
        const int folder = lowest().folder.number();
        lowest().progressed = false;
        ++lowest().passes;
        m_reader.start(folder);
        while (const FolderEntry* entry = m_reader.next()) {
            if (isStopped())
                return;
            const char* name = entry->name.data();
            if (entry->typeIsKnown ? entry->type == EntryType::folder : isFolder(folder, name)) {
                if (std::string copy(entry->name); !lowest().stuck.contains(copy))
                    m_pending.push_back(std::move(copy));
            } else if (unlinkat(folder, name, 0) == 0) {
                countRemoved();
            } else if (errno != ENOENT) {
                note(errno);
            }
        }
        if (m_reader.failure() != 0)
            note(m_reader.failure());
    }

    static bool isFolder(int folder, const char* name) {
        struct stat status {};
        return fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISDIR(status.st_mode);
    }

    /// Removes the lowest level, which has no pending folders left, from its parent.
    void leave() {
        if (!reopenParent()) {
            m_parentIsLost = true;
            note(EBUSY); // another process has moved the folder
            return;
        }
        const Level& parent = m_levels[m_levels.size() - 2];
        int failure =
            unlinkat(parent.folder.number(), m_pending.back().c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
        if ((failure == ENOTEMPTY || failure == EEXIST) && lowest().progressed && lowest().passes < maxPasses
            && lseek(lowest().folder.number(), 0, SEEK_SET) == 0) {
            read();
            return;
        }
        m_levels.pop_back();
        finish(failure);
    }

    /// Reopens the parent of the lowest level if it is closed. Returns false when ".." is a different folder.
    bool reopenParent() {
        Level& parent = m_levels[m_levels.size() - 2];
        if (parent.folder)
            return true;
        Descriptor folder(openat(lowest().folder.number(), "..", openForReading));
        if (!folder || system::identityOf(folder.number()) != parent.identity)
            return false;
        parent.folder = std::move(folder);
        m_firstOpen = m_levels.size() - 2;
        return true;
    }

    void limitOpenLevels() {
        if (m_levels.size() - m_firstOpen < maxOpenLevels)
            return;
        m_levels[m_firstOpen].folder = Descriptor();
        ++m_firstOpen;
    }

    Progress* m_progress; ///< may be null
    FolderReader m_reader;
    std::vector<Level> m_levels;
    std::vector<std::string> m_pending; ///< for each level its own name, then its pending child folders
    std::size_t m_firstOpen = 1;        ///< index of the highest open level below the first, which stays open
    int m_failure = 0;
    bool m_entryIsRemoved = false;
    bool m_parentIsLost = false;
};

/// A visitor that clears immutable flags. Never opens pipes or devices, and doesn't cross mount points, as
/// the removal doesn't.
class Unlocker {
public:
    explicit Unlocker(const system::Identity& trash) : m_trash(trash) {}

    Descend visit(const WalkEntry& entry) const {
        return unlock(entry.folder, std::string(entry.name).c_str());
    }

    void merge(Unlocker&&) {}

    /// Clears the flag of one entry.
    Descend unlock(int folder, const char* name) const {
        const std::optional<system::Identity> identity = system::identityAt(folder, name);
        if (!identity || !identity->isOnSameMount(m_trash))
            return Descend::no;
        const std::optional<Attributes> attributes = system::attributesAt(folder, name);
        if (attributes && (attributes->type == EntryType::file || attributes->type == EntryType::folder)) {
            const Descriptor entry(
                openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
            if (entry)
                system::clearImmutableFlag(entry.number());
        }
        return Descend::yes;
    }

private:
    system::Identity m_trash;
};

} // namespace

Result<void> removeForGood(const Disk& disk, std::string_view path, Progress* progress) {
    Result<Place> place = placeInTrash(disk, path);
    if (!place)
        return fileError(FileAction::remove, place.error(), lastComponent(path));
    if (const int failure = Removal(std::move(*place), progress).run(); failure != 0)
        return fileError(FileAction::remove, failure, lastComponent(path));
    return {};
}

void unlock(const Disk& disk, std::string_view path, const Progress* progress) {
    const Result<Place> place = placeInTrash(disk, path);
    if (!place)
        return;
    const std::optional<system::Identity> trash = system::identityOf(place->folder.number());
    if (!trash)
        return;
    const Unlocker unlocker(*trash);
    if (unlocker.unlock(place->folder.number(), place->name.c_str()) == Descend::no)
        return;
    // The path to the root must not lead through a symbolic link.
    const auto openInTrash = [&](const std::string& root) -> Result<Descriptor> {
        const Result<Place> found = placeInTrash(disk, root);
        if (!found)
            return found.error();
        Descriptor folder = system::openFolderBelow(found->folder.number(), found->name.c_str());
        if (!folder)
            return posixError(errno);
        return folder;
    };
    const std::string root(path);
    Progress uncounted(progress);
    walk(openInTrash, std::span(&root, 1), Hidden::include, unlocker, &uncounted);
}

} // namespace platform
