#include "platform/files/disk.h"

#include "platform/files/path.h"
#include "platform/system/system.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

// Paths are resolved here, name by name from the open root, because the host's own resolution would let
// symbolic links and ".." leave a disk whose root is a folder of the host.

namespace platform {

namespace {

constexpr int maxLinks = 40;

/// Maximum number of parent folders that are kept open to resolve "..". Only the targets of symbolic links
/// contain "..", usually few. A path can have more levels than the process may have descriptors.
constexpr std::size_t maxOpenFolders = 16;

enum class LastName { follow, keep };

/// Resolves one path from the disk's root.
class Resolver {
public:
    explicit Resolver(int root) : m_root(root) {}

    /// Opens the folder that contains the path's last name as current() and sets lastName(), which is empty
    /// when the path leads to current() itself (the root, or "..").
    Result<void> resolve(std::string_view path, LastName last) {
        if (path.empty() || path.front() != '/' || path.find('\0') != std::string_view::npos)
            return posixError(path.empty() ? ENOENT : EINVAL);
        push(path);
        while (!m_pending.empty()) {
            std::string name = std::move(m_pending.back());
            m_pending.pop_back();
            if (name == "..") {
                if (!m_folders.empty())
                    m_folders.pop_back();
                if (!m_folders.empty() && !m_folders.back())
                    return posixError(EMFILE);
                continue;
            }
            const bool isLast = m_pending.empty();
            if (isLast && last == LastName::keep) {
                m_lastName = std::move(name);
                return {};
            }
            if (Result<bool> followed = follow(name); !followed)
                return followed.error();
            else if (*followed)
                continue;
            if (isLast) {
                m_lastName = std::move(name);
                return {};
            }
            Descriptor folder = system::openToPassThrough(current(), name.c_str());
            if (!folder)
                return posixError(errno);
            m_folders.push_back(std::move(folder));
            if (m_folders.size() > maxOpenFolders)
                m_folders[m_folders.size() - 1 - maxOpenFolders] = Descriptor();
        }
        return {};
    }

    int current() const { return m_folders.empty() ? m_root : m_folders.back().number(); }
    const std::string& lastName() const { return m_lastName; }
    bool hasFollowedLink() const { return m_links > 0; }

private:
    /// If `name` is a symbolic link, pushes its target and returns true.
    Result<bool> follow(const std::string& name) {
        char target[PATH_MAX];
        const ssize_t length = readlinkat(current(), name.c_str(), target, sizeof target);
        if (length < 0) {
            if (errno == EINVAL) // not a link
                return false;
            return posixError(errno);
        }
        if (++m_links > maxLinks)
            return posixError(ELOOP);
        const std::string_view path(target, static_cast<std::size_t>(length));
        if (path.starts_with('/'))
            m_folders.clear();
        push(path);
        return true;
    }

    /// Makes the names of a path the next ones to resolve.
    void push(std::string_view path) {
        std::vector<std::string> names;
        while (!path.empty()) {
            const std::string_view name = path.substr(0, path.find('/'));
            path.remove_prefix(std::min(name.size() + 1, path.size()));
            if (!name.empty() && name != ".")
                names.emplace_back(name);
        }
        m_pending.insert(m_pending.end(), std::make_move_iterator(names.rbegin()),
                         std::make_move_iterator(names.rend()));
    }

    int m_root;
    int m_links = 0;
    std::vector<Descriptor> m_folders;  ///< below the root, outermost first; the older ones may be closed
    std::vector<std::string> m_pending; ///< names to resolve, in reverse order
    std::string m_lastName;
};

bool isSameFolder(int descriptor, const char* hostPath) {
    struct stat ours {};
    struct stat other {};
    return fstat(descriptor, &ours) == 0 && stat(hostPath, &other) == 0 && ours.st_dev == other.st_dev
           && ours.st_ino == other.st_ino;
}

/// Returns the value of an environment variable, or nullopt when it is unset or empty.
std::optional<std::string> environment(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr || *value == '\0' ? std::nullopt : std::optional<std::string>(value);
}

/// Returns the home that the user database has for this process's user; empty when it doesn't know the user.
/// Read once, since getpwuid() isn't thread-safe.
const std::string& homeInUserDatabase() {
    static const std::string home = [] {
        const passwd* user = getpwuid(getuid());
        return std::string(user == nullptr ? "" : user->pw_dir);
    }();
    return home;
}

std::string homeOfThisMachine() {
    if (const auto home = environment("HOME"))
        return *home;
    const std::string& home = homeInUserDatabase();
    return home.empty() ? "/" : home;
}

std::optional<Disk>& currentDisk() {
    static std::optional<Disk> disk;
    return disk;
}

/// Opens the regular file `name` in `folder` for reading.
Result<Descriptor> openRegularFile(int folder, const char* name) {
    struct stat status {};
    if (fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) != 0)
        return posixError(errno);
    if (!S_ISREG(status.st_mode))
        return posixError(S_ISDIR(status.st_mode) ? EISDIR : S_ISLNK(status.st_mode) ? ELOOP : EINVAL);
    // The entry may have been replaced since: O_NONBLOCK keeps a pipe from blocking, and the type is checked
    // again.
    Descriptor file(openat(folder, name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    if (!file || fstat(file.number(), &status) != 0)
        return posixError(errno);
    if (!S_ISREG(status.st_mode))
        return posixError(EINVAL);
    return file;
}

[[noreturn]] void endProgram(const char* why) {
    std::fprintf(stderr, "%s\n", why);
    std::abort();
}

} // namespace

Result<Disk> Disk::open(const std::string& hostRoot, std::string_view home,
                        std::optional<std::string_view> userCache) {
    Descriptor root(::open(hostRoot.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!root)
        return posixError(errno);
    Disk disk;
    disk.m_hostRoot = hostRoot;
    disk.m_home = standardized(home);
    if (userCache)
        disk.m_userCache = standardized(*userCache);
    disk.m_isOfThisMachine = isSameFolder(root.number(), "/");
    disk.m_root = std::make_shared<const Descriptor>(std::move(root));
    // A home that the user may not list is valid.
    Resolver resolver(disk.m_root->number());
    if (Result<void> resolved = resolver.resolve(disk.m_home, LastName::follow); !resolved)
        return resolved.error();
    const std::string& name = resolver.lastName();
    const Descriptor folder =
        system::openToPassThrough(resolver.current(), name.empty() ? "." : name.c_str());
    if (!folder)
        return posixError(errno);
    struct statvfs status {};
    disk.m_isReadOnly = fstatvfs(folder.number(), &status) == 0 && (status.f_flag & ST_RDONLY) != 0;
    disk.m_isOfThisUser =
        disk.m_isOfThisMachine && isSameFolder(folder.number(), homeInUserDatabase().c_str());
    return disk;
}

Result<Disk> Disk::ofEnvironment() {
    const std::string root = environment("LUMVALE_DISK").value_or("/");
    const std::string home = environment("LUMVALE_HOME").value_or(homeOfThisMachine());
    Result<Disk> disk = open(root, home, environment("LUMVALE_USER_CACHE"));
    if (disk) {
        if (!disk->m_userCache && disk->m_isOfThisMachine)
            disk->m_userCache = system::userCacheFolder();
        return disk;
    }
    Error error = disk.error();
    error.description = "no disk at " + root + " with a home at " + home + ": " + error.description;
    return error;
}

void Disk::setCurrent(Disk disk) {
    if (currentDisk())
        endProgram("The current disk is set once only.");
    currentDisk() = std::move(disk);
}

const Disk& Disk::current() {
    if (!currentDisk())
        endProgram("The current disk was not set.");
    return *currentDisk();
}

std::string Disk::inHome(std::string_view relative) const {
    return joined(m_home, relative);
}

Result<Descriptor> Disk::openFolder(std::string_view path) const {
    Resolver resolver(m_root->number());
    if (Result<void> resolved = resolver.resolve(path, LastName::follow); !resolved)
        return resolved.error();
    const std::string& name = resolver.lastName();
    Descriptor folder(openat(resolver.current(), name.empty() ? "." : name.c_str(),
                             O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder)
        return posixError(errno);
    return folder;
}

Result<Descriptor> Disk::openFile(std::string_view path) const {
    Resolver resolver(m_root->number());
    if (Result<void> resolved = resolver.resolve(path, LastName::follow); !resolved)
        return resolved.error();
    const std::string& name = resolver.lastName();
    if (name.empty())
        return posixError(EISDIR);
    return openRegularFile(resolver.current(), name.c_str());
}

Result<Descriptor> Disk::openFile(const Place& place) {
    return openRegularFile(place.folder.number(), place.name.c_str());
}

Result<Place> Disk::place(std::string_view path) const {
    Resolver resolver(m_root->number());
    if (Result<void> resolved = resolver.resolve(path, LastName::keep); !resolved)
        return resolved.error();
    if (resolver.lastName().empty())
        return posixError(EINVAL);
    // Passing through a folder needs no read permission.
    Descriptor folder = system::openToPassThrough(resolver.current(), ".");
    if (!folder)
        return posixError(errno);
    return Place{std::move(folder), resolver.lastName(), resolver.hasFollowedLink()};
}

Result<Place> Disk::placeFollowed(std::string_view path) const {
    Resolver resolver(m_root->number());
    if (Result<void> resolved = resolver.resolve(path, LastName::follow); !resolved)
        return resolved.error();
    Descriptor folder = system::openToPassThrough(resolver.current(), ".");
    if (!folder)
        return posixError(errno);
    return Place{std::move(folder), resolver.lastName().empty() ? "." : resolver.lastName(),
                 resolver.hasFollowedLink()};
}

Result<std::string> Disk::hostPath(std::string_view path) const {
    const Result<Place> entry = place(path);
    if (!entry)
        return entry.error();
    if (!system::attributesAt(entry->folder.number(), entry->name.c_str()))
        return posixError(errno);
    const std::string folder = system::hostPath(entry->folder.number());
    if (folder.empty())
        return posixError(ENAMETOOLONG);
    return joined(folder, entry->name);
}

} // namespace platform
