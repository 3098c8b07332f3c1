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

/// The removal of one entry with all that is below it.
///
/// The folders from the entry's own down to the one being emptied are levels. A folder is read to its end:
/// what is no folder goes at once, the names of folders wait. Each of these becomes a level in its turn and
/// is removed from its parent when it is empty. Only the lowest levels stay open; a closed one is opened
/// again as the ".." of the level below it. Some file systems pass over entries while others are removed, so
/// that a folder that isn't empty then is read again as long as that removes something.
class Removal {
public:
    explicit Removal(Place entry) {
        m_pending.push_back(std::move(entry.name));
        m_levels.emplace_back(); // holds the entry; never read nor removed
        lowest().identity = system::identityOf(entry.folder.number()).value_or(system::Identity{});
        lowest().folder = std::move(entry.folder);
    }

    /// The host's errno of what kept the entry from going; 0 when it is gone.
    int run() {
        remove(m_pending.back().c_str());
        while (m_levels.size() > 1 && !m_isLost) {
            if (m_pending.size() > m_levels.back().firstChild)
                remove(m_pending.back().c_str());
            else
                leave();
        }
        return m_entryIsGone ? 0 : m_failure;
    }

private:
    struct Level {
        Descriptor folder; ///< none while it is closed
        system::Identity identity;
        std::size_t firstChild = 0;  ///< where the names of folders in it begin in m_pending
        int passes = 0;              ///< how many times it was read
        bool progressed = false;     ///< in the last pass
        std::set<std::string> stuck; ///< folders in it that cannot go
    };

    /// Of the 128 that a removal may have, what the disk and the caller need is left.
    static constexpr std::size_t maximumOpenLevels = 120;

    /// Far more than any file system needs: a program that goes on filling a folder must not hold us for
    /// ever.
    static constexpr int maximumPasses = 1000;

    Level& lowest() { return m_levels.back(); }

    /// Removes the entry of this name in the lowest level, or makes a folder the new lowest level.
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
        closeOneIfMany();
        m_levels.emplace_back();
        lowest().folder = std::move(folder);
        lowest().identity = *identity;
        lowest().firstChild = m_pending.size();
        read();
    }

    /// Removes a folder that cannot be entered: it may be empty. The host's errno, and why it wasn't entered
    /// when it is not.
    int removeUnopened(const char* name, int whyUnopened) {
        if (unlinkat(lowest().folder.number(), name, AT_REMOVEDIR) == 0)
            return 0;
        return errno == ENOTEMPTY || errno == EEXIST ? whyUnopened : errno;
    }

    /// Notes what became of the last pending name, that of an entry of the lowest level.
    void finish(int failure) {
        const bool isEntryItself = m_levels.size() == 1;
        if (failure == 0) {
            lowest().progressed = true;
            m_entryIsGone = isEntryItself;
        } else if (isEntryItself || failure != ENOENT) {
            note(failure);
            lowest().stuck.insert(std::move(m_pending.back()));
        }
        m_pending.pop_back();
    }

    /// That a folder isn't empty follows from what is in it, and that is noted first.
    void note(int failure) {
        if (m_failure == 0)
            m_failure = failure;
    }

    /// Reads the lowest level to its end.
    void read() {
        const int folder = lowest().folder.number();
        lowest().progressed = false;
        ++lowest().passes;
        m_reader.start(folder);
        while (const FolderEntry* entry = m_reader.next()) {
            const char* name = entry->name.data();
            if (entry->typeIsKnown ? entry->type == EntryType::folder : isFolder(folder, name)) {
                if (std::string copy(entry->name); !lowest().stuck.contains(copy))
                    m_pending.push_back(std::move(copy));
            } else if (unlinkat(folder, name, 0) == 0) {
                lowest().progressed = true;
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

    /// Removes the lowest level, all of whose folders were tried, from its parent.
    void leave() {
        if (!reopenParent()) {
            m_isLost = true;
            note(EBUSY); // something else is moving what is being removed
            return;
        }
        const Level& parent = m_levels[m_levels.size() - 2];
        int failure =
            unlinkat(parent.folder.number(), m_pending.back().c_str(), AT_REMOVEDIR) == 0 ? 0 : errno;
        if ((failure == ENOTEMPTY || failure == EEXIST) && lowest().progressed
            && lowest().passes < maximumPasses && lseek(lowest().folder.number(), 0, SEEK_SET) == 0) {
            read();
            return;
        }
        m_levels.pop_back();
        finish(failure);
    }

    /// Opens the parent of the lowest level again if it is closed; false when it isn't the one it was.
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

    void closeOneIfMany() {
        if (m_levels.size() - m_firstOpen < maximumOpenLevels)
            return;
        m_levels[m_firstOpen].folder = Descriptor();
        ++m_firstOpen;
    }

    FolderReader m_reader;
    std::vector<Level> m_levels;
    std::vector<std::string> m_pending; ///< of each level its own name, then those of folders in it
    std::size_t m_firstOpen = 1;        ///< the highest open level but the first, which always is
    int m_failure = 0;
    bool m_entryIsGone = false;
    bool m_isLost = false;
};

/// Takes flags off; a visitor of the walk. Pipes and devices are never opened, and like the removal it stays
/// on the volume.
class Unlocking {
public:
    explicit Unlocking(const system::Identity& trash) : m_trash(trash) {}

    Descend visit(const WalkEntry& entry) const {
        return unlock(entry.folder, std::string(entry.name).c_str());
    }

    void merge(Unlocking&&) {}

    /// Takes the flag off one entry.
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

Result<void> removeForGood(const Disk& disk, std::string_view path) {
    Result<Place> place = placeInTrash(disk, path);
    if (!place)
        return fileError(FileAction::remove, place.error(), lastComponent(path));
    if (const int failure = Removal(std::move(*place)).run(); failure != 0)
        return fileError(FileAction::remove, failure, lastComponent(path));
    return {};
}

void unlock(const Disk& disk, std::string_view path) {
    const Result<Place> place = placeInTrash(disk, path);
    if (!place)
        return;
    const std::optional<system::Identity> trash = system::identityOf(place->folder.number());
    if (!trash)
        return;
    const Unlocking unlocking(*trash);
    if (unlocking.unlock(place->folder.number(), place->name.c_str()) == Descend::no)
        return;
    // Whenever the walk has to find its root, it may be led through no link.
    const auto openInTrash = [&](const std::string& root) {
        const Result<Place> found = placeInTrash(disk, root);
        return found ? system::openFolderBelow(found->folder.number(), found->name.c_str()) : Descriptor();
    };
    const std::string root(path);
    walk(openInTrash, std::span(&root, 1), Hidden::include, unlocking);
}

} // namespace platform
