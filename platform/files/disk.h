#pragma once

#include "platform/base/result.h"
#include "platform/files/descriptor.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The location of an entry: its open parent folder and its name in it. Symbolic links at the name aren't
/// followed.
struct Place {
    Descriptor folder;
    std::string name;
    bool isThroughLink = false; ///< a symbolic link was followed on the way to the folder
};

/// A disk to clean: a folder of the host whose paths are resolved with that folder as "/". A value type:
/// copies share one open root and may be used from any thread.
///
/// Paths are absolute paths on the disk, as bytes. Symbolic links are followed, absolute ones from the disk's
/// root, and ".." at the root is the root, so that no path leaves the disk. More than 40 links fail with
/// ELOOP. Errors are of the POSIX domain; the file operations built on this class wrap them.
class Disk {
public:
    /// Opens the disk whose "/" is the host's folder `hostRoot`, with the user's home at `home` on it. Fails
    /// when either isn't a folder. `userCache` is the per-user temporary cache folder, if the disk has one.
    static Result<Disk> open(const std::string& hostRoot, std::string_view home,
                             std::optional<std::string_view> userCache = std::nullopt);

    /// Opens the disk named by the environment: LUMVALE_DISK (default "/"), LUMVALE_HOME (default: the home
    /// of this machine's user) and LUMVALE_USER_CACHE (default for "/": the folder that the system reports).
    /// The error's description names the disk and the home.
    static Result<Disk> ofEnvironment();

    /// Sets and returns the default disk of all operations. It is set once, before any thread starts; setting
    /// it twice, or reading it before it was set, aborts the program.
    static void setCurrent(Disk disk);
    static const Disk& current();

    const std::string& hostRoot() const { return m_hostRoot; }
    const std::string& home() const { return m_home; }                          ///< standardized
    const std::optional<std::string>& userCache() const { return m_userCache; } ///< standardized

    /// Returns the path `relative` below the home.
    std::string inHome(std::string_view relative) const;

    /// Returns true when this is the running system's own disk. Programs found on other disks must not be
    /// started.
    bool isOfThisMachine() const { return m_isOfThisMachine; }

    /// Returns true when this is the running system's own disk with the home of this process's user: the only
    /// disk and home for which the system's own services (Trash, photo library) work.
    bool isOfThisUser() const { return m_isOfThisUser; }

    /// Returns true if the volume of the home was mounted read-only when the disk was opened.
    bool isReadOnly() const { return m_isReadOnly; }

    /// Opens the folder at `path` for reading. A symbolic link at the last name is followed.
    Result<Descriptor> openFolder(std::string_view path) const;

    /// Opens the regular file at `path` for reading. Refuses anything else without opening it, so that a pipe
    /// or device can't block: with EISDIR for a folder, otherwise EINVAL.
    Result<Descriptor> openFile(std::string_view path) const;

    /// Opens the regular file at a place likewise. Refuses a symbolic link with ELOOP.
    static Result<Descriptor> openFile(const Place& place);

    /// Returns the place of the entry at `path`. Its parent folder must exist, the entry itself need not.
    /// Fails for "/".
    Result<Place> place(std::string_view path) const;

    /// Returns the place of the target of `path`: a symbolic link at the last name is followed too. The name
    /// of the root is ".".
    Result<Place> placeFollowed(std::string_view path) const;

    /// Returns the path on the host of the entry at `path`, for programs of the host. Its parent folder's
    /// symbolic links are followed on this disk; the entry must exist.
    Result<std::string> hostPath(std::string_view path) const;

private:
    Disk() = default;

    std::string m_hostRoot;
    std::string m_home;
    std::optional<std::string> m_userCache;
    std::shared_ptr<const Descriptor> m_root;
    bool m_isOfThisMachine = false;
    bool m_isOfThisUser = false;
    bool m_isReadOnly = false;
};

} // namespace platform
