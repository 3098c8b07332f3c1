#include "tools/sample_disk/data/caches.h"
#include "tools/sample_disk/areas.h"

namespace SampleDisk {

void makeCaches(Folder&, Folder& home, Random& random) {
    Folder caches = home.folder("Library/Caches", 0);
    make(caches, userCaches, random);
}

void makeLogs(Folder&, Folder& home, Random& random) {
    Folder logs = home.folder("Library/Logs", 0);
    make(logs, userLogs, random);
}

} // namespace SampleDisk
