#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

namespace sample_disk {

/// Makes application bundles, and what the applications keep in ~/Library.
void makeApplications(DiskWriter& disk, Random& random);

} // namespace sample_disk
