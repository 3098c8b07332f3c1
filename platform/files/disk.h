#pragma once

#include "platform/base/result.h"
#include "platform/files/descriptor.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Where an entry lies: its folder, open, and its own name in it, which nothing follows.
struct Place {
    Descriptor folder;
    std::string name;
};

/// The disk that is worked on: a folder of the host stands for its "/". A value: copies share one open root
/// and may be used from any thread.
///
/// Paths are absolute paths of the disk, as bytes. Links are followed, absolute ones from the disk's root,
/// ".." never above it, so nothing leads out of the disk; a path passes at most 40 links. Errors are of the
/// POSIX domain: the file operations built on this wrap them.
class Disk {
public:
    /// The disk whose "/" is the host's folder `hostRoot`, with the user's home at `home` on it. Fails when
    /// either is no folder. `userCache` is the per-user temporary cache folder, where the disk has one.
    static Result<Disk> open(const std::string& hostRoot, std::string_view home,
                             std::optional<std::string_view> userCache = std::nullopt);

    /// The disk that the environment names: LUMVALE_DISK (else "/"), LUMVALE_HOME (else the home of this
    /// machine's user) and LUMVALE_USER_CACHE. The error's description says which disk is not there.
    static Result<Disk> ofEnvironment();

    /// The disk that operations work on unless they are given another. Set once, before any thread starts;
    /// setting it twice, or asking before it was set, ends the program.
    static void setCurrent(Disk disk);
    static const Disk& current();

    const std::string& hostRoot() const { return m_hostRoot; }
    const std::string& home() const { return m_home; }                          ///< standardised
    const std::optional<std::string>& userCache() const { return m_userCache; } ///< standardised

    /// `relative` below the home.
    std::string inHome(std::string_view relative) const;

    /// Whether this is the running system's own disk: only then may a program found on it be started.
    bool isOfThisMachine() const { return m_isOfThisMachine; }

    /// The folder at `path`, open for reading; a link at the last name is followed.
    Result<Descriptor> openFolder(std::string_view path) const;

    /// The regular file at `path`, open for reading; anything else (a pipe, a device) is refused unopened,
    /// with EISDIR for a folder and EINVAL for the rest, so that this never blocks.
    Result<Descriptor> openFile(std::string_view path) const;

    /// The same for the entry at a place: a link there is refused too, with ELOOP.
    static Result<Descriptor> openFile(const Place& place);

    /// The place of the entry at `path`, whose folder must exist; the entry itself need not. Fails for "/".
    Result<Place> place(std::string_view path) const;

    /// The place of what `path` leads to: a link at the last name is followed too. The root is "." in itself.
    Result<Place> placeFollowed(std::string_view path) const;

private:
    Disk() = default;

    std::string m_hostRoot;
    std::string m_home;
    std::optional<std::string> m_userCache;
    std::shared_ptr<const Descriptor> m_root;
    bool m_isOfThisMachine = false;
};

} // namespace platform
