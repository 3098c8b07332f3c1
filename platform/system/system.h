#pragma once

#include "platform/files/attributes.h"
#include "platform/files/descriptor.h"

#include <cstdint>
#include <optional>
#include <string>

/// The system calls that differ between systems, as thin as they come: each returns what the call returns and
/// leaves the host's errno. For the layer's own use.
namespace platform::system {

/// Opens the folder `name` in `folder` without following a link, just to pass through it: no permission to
/// read it is needed. ELOOP or ENOTDIR for a link, ENOTDIR for what is no folder.
Descriptor openToPassThrough(int folder, const char* name);

/// The attributes of the entry `name` in `folder`, of a link its own.
std::optional<Attributes> attributesAt(int folder, const char* name);

/// Which entry something is, whatever it is called: two are the same when all three are equal. A volume can
/// be mounted in more than one place, and a folder of it too; each of these is a mount of its own.
struct Identity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t mount = 0; ///< 0 where the system doesn't say

    bool operator==(const Identity&) const = default;
    bool isOnSameMount(const Identity& other) const { return device == other.device && mount == other.mount; }
};

/// The identity of what is open, and of the entry `name` in `folder`, of a link its own.
std::optional<Identity> identityOf(int descriptor);
std::optional<Identity> identityAt(int folder, const char* name);

/// Opens the folder at a relative `path` below `folder` for reading; no name of the path may be a link (ELOOP
/// or ENOTDIR), nor "..".
Descriptor openFolderBelow(int folder, const char* path);

/// Where the host has what is open, as an absolute path without links; empty where it doesn't say.
std::string hostPath(int descriptor);

/// The identity of what lies at an absolute path of the host, of a link its own.
std::optional<Identity> identityAtHost(const std::string& path);

/// Renames an entry; EEXIST when the new name is taken, by anything. Never replaces. EINVAL or ENOSYS where
/// the file system or the kernel cannot promise that.
int renameExclusively(int fromFolder, const char* fromName, int toFolder, const char* toName);

/// Takes the user's immutable flag off an open file or folder; 0 also when it has none.
int clearImmutableFlag(int descriptor);

} // namespace platform::system
