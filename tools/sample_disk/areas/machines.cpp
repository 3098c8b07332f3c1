#include "tools/sample_disk/data/machines.h"
#include "tools/sample_disk/areas.h"

namespace SampleDisk {

void makeMachines(Folder&, Folder& home, Random& random) {
    make(home, machines, random);
}

} // namespace SampleDisk
