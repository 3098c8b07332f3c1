#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

namespace sample_disk {

/// Makes everything but the applications, the launch agents and the photo library: the files of the system,
/// and those of the user that each category of the cleanup finds.
void makeFiles(DiskWriter& disk, Random& random);

} // namespace sample_disk
