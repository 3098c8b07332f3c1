#include "core/scan/permissions.h"

#include "platform/folder.h"

namespace LumvalePermissions {

bool hasFullDiskAccess(const platform::Disk& disk) {
    // The system shows this folder to nobody without that permission.
    return static_cast<bool>(platform::listFolder(disk, disk.inHome("Library/Mail")));
}

} // namespace LumvalePermissions
