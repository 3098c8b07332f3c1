#include "core/removal/permissions.h"

#include "platform/files/folder.h"

namespace core::LumvalePermissions {

bool hasFullDiskAccess(const platform::Disk& disk) {
    // The system shows this folder to nobody without that permission.
    return static_cast<bool>(platform::listFolder(disk, disk.inHome("Library/Mail")));
}

} // namespace core::LumvalePermissions
