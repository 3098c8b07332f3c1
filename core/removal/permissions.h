#pragma once

#include "platform/files/disk.h"

namespace core::LumvalePermissions {

/// Whether the system lets this program read places that it protects: whether the mail folder can be listed.
/// A home without one looks like a permission that was not given. Cheap: for any thread.
bool hasFullDiskAccess(const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvalePermissions
