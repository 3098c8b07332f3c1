#pragma once

#include "tools/sample_disk/disk_writer.h"
#include "tools/sample_disk/random.h"

namespace sample_disk {

/// Makes a photo library: its catalogue, and the files of the photos and videos. Some are in it twice or
/// more.
void makePhotoLibrary(DiskWriter& disk, Random& random);

} // namespace sample_disk
