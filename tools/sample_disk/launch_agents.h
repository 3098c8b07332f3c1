#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

namespace sample_disk {

/// Makes the property lists of what starts at login, for the user and for all users.
void makeLaunchAgents(DiskWriter& disk, Random& random);

} // namespace sample_disk
