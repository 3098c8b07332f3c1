#pragma once

#include "platform/files/attributes.h"
#include "platform/files/descriptor.h"
#include "platform/files/entry_id.h"

#include <cstdint>
#include <ctime>
#include <optional>
#include <string>

#include <spawn.h>
#include <sys/stat.h>

/// Thin wrappers of system calls that differ between systems. On failure they leave the host's errno.
/// Internal to platform/.
namespace platform::system {

/// Opens the folder `name` in `folder` only to pass through it, which needs no read permission. Symbolic
/// links aren't followed: a link fails with ELOOP or ENOTDIR, anything else that isn't a folder with ENOTDIR.
Descriptor openToPassThrough(int folder, const char* name);

/// Returns the attributes of the entry `name` in `folder`. Symbolic links aren't followed.
std::optional<Attributes> attributesAt(int folder, const char* name);

/// Returns the type of an entry with this mode, a member of a result of stat(2).
EntryType entryType(mode_t mode);

/// Returns the modification time in a result of stat(2), whose member POSIX names differently on each system.
timespec modificationTime(const struct stat& status);

/// Identifies an entry independently of its path: two entries are the same when all members are equal. A
/// volume, or a folder of it (bind mount), can be mounted at several mount points; these differ in `mount`.
struct Identity : EntryId {
    std::uint64_t mount = 0; ///< 0 where the system doesn't report it

    bool operator==(const Identity&) const = default;
    bool isOnSameMount(const Identity& other) const { return device == other.device && mount == other.mount; }
};

/// Returns the identity of an open file or folder, or of the entry `name` in `folder` (symbolic links aren't
/// followed).
std::optional<Identity> identityOf(int descriptor);
std::optional<Identity> identityAt(int folder, const char* name);

/// Opens the folder at a relative `path` below `folder` for reading. No name of the path may be a symbolic
/// link (ELOOP or ENOTDIR) or "..".
Descriptor openFolderBelow(int folder, const char* path);

/// Returns the host's absolute path, without symbolic links, of an open file or folder; empty when the host
/// doesn't report it.
std::string hostPath(int descriptor);

/// Returns the identity of the entry at an absolute path of the host. A symbolic link at the last name isn't
/// followed.
std::optional<Identity> identityAtHost(const std::string& path);

/// Renames an entry without ever replacing another. Returns 0, or -1 with errno: EEXIST when the new name is
/// taken, EINVAL or ENOSYS when the file system or kernel doesn't support exclusive renames.
int renameExclusively(int fromFolder, const char* fromName, int toFolder, const char* toName);

/// Clears the user's immutable flag of an open file or folder. Returns 0, also when the flag isn't set, or -1
/// with errno.
int clearImmutableFlag(int descriptor);

/// Makes a program that is started with these attributes and actions inherit standard output and error, and
/// no other open file unless an action opens it. Returns 0 or an error number.
int inheritStandardOutput(posix_spawnattr_t& attributes, posix_spawn_file_actions_t& actions);

/// Returns the host's path, without symbolic links, of the user's folder for temporary caches, or nullopt
/// when the system has none.
std::optional<std::string> userCacheFolder();

} // namespace platform::system
