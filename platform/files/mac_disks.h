#pragma once

#include "platform/files/disk.h"

#include <string>
#include <vector>

/// Finds the disks and homes of Macs on this machine.
namespace platform {

/// A disk of a Mac that is mounted on this machine.
struct MacDisk {
    std::string hostRoot;           ///< the host's folder on which it is mounted
    std::vector<std::string> homes; ///< paths on the disk, see macHomes()
};

/// Returns the homes on the disk whose "/" is the host's folder `hostRoot`: the folders in /Users, in byte
/// order, without Shared and hidden ones. Fails with an error of the POSIX domain if `hostRoot` isn't a
/// folder, and with ENOENT if there is no home.
Result<std::vector<std::string>> macHomes(const std::string& hostRoot);

/// Returns the mounted disks that have homes of a Mac's users, in byte order of their mount points. A disk
/// that is mounted more than once is listed once. Network volumes are left out, since an unreachable server
/// would block the program.
std::vector<MacDisk> mountedMacDisks();

/// Opens a disk with a home of a Mac's user. `home` is a path on the disk, or a path of the host below
/// `hostRoot`; if it is empty, the disk's only home is used. Fails as Disk::open() and macHomes() do, and
/// with EINVAL if `home` is empty and there are several homes.
Result<Disk> openMacDisk(const std::string& hostRoot, std::string_view home);

} // namespace platform
