#pragma once

#include "tools/sample_disk/contents.h"

#include <cstddef>

namespace SampleDisk {

// The parts of a disk, one builder each; `root` is the disk's "/", `home` the user's home.

void makeSystem(Folder& root, Folder& home, Random& random);       ///< what the user never made
void makeApplications(Folder& root, Folder& home, Random& random); ///< bundles and what they keep in Library
void makeCaches(Folder& root, Folder& home, Random& random);
void makeLogs(Folder& root, Folder& home, Random& random);
void makeTrash(Folder& root, Folder& home, Random& random);
void makeDownloads(Folder& root, Folder& home, Random& random);
void makeDeveloper(Folder& root, Folder& home, Random& random); ///< build products and simulator caches
void makeLeftovers(Folder& root, Folder& home, Random& random); ///< of applications no longer installed
void makeMachines(Folder& root, Folder& home, Random& random);  ///< virtual machines and what goes with them
void makeAgents(Folder& root, Folder& home, Random& random);    ///< what starts at login
void makeDocuments(Folder& root, Folder& home, Random& random); ///< the user's own files, big ones and links
void makePhotos(Folder& root, Folder& home, Random& random);    ///< a photo library, catalogue and files

/// Adds entries, spread as on a disk long in use, until the disk has `entries` of them.
void makeBulk(DiskWriter& writer, std::size_t entries, Random& random);

} // namespace SampleDisk
