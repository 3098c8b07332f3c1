#pragma once

#include "platform/files/disk.h"

namespace core::LumvalePermissions {

/// Returns whether the user granted Full Disk Access, tested by listing the protected folder Library/Mail.
/// Also false if the home has no such folder. Fast enough for any thread.
bool hasFullDiskAccess(const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvalePermissions
