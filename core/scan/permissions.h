#pragma once

#include "platform/disk.h"

namespace LumvalePermissions {

/// Whether the system lets this program read places that it protects. Cheap: for any thread.
bool hasFullDiskAccess(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvalePermissions
