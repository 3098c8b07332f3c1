#include "tools/sample_disk/data/leftovers.h"
#include "tools/sample_disk/areas.h"

namespace SampleDisk {

void makeLeftovers(Folder&, Folder& home, Random& random) {
    Folder library = home.folder("Library", 0);
    make(library, leftovers, random);
}

} // namespace SampleDisk
