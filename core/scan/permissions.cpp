#include "core/scan/permissions.h"

#include "platform/folder.h"

namespace LumvalePermissions {

bool hasFullDiskAccess(const platform::Disk& disk) {
    // Every user has this folder, and the system shows it to nobody without that permission.
    return static_cast<bool>(platform::listFolder(disk, disk.inHome("Library/Mail")));
}

} // namespace LumvalePermissions
