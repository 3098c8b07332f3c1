#include "core/removal/permissions.h"

#include "platform/files/folder.h"

namespace core::LumvalePermissions {

bool hasFullDiskAccess(const platform::Disk& disk) {
    return static_cast<bool>(platform::listFolder(disk, disk.inHome("Library/Mail")));
}

} // namespace core::LumvalePermissions
