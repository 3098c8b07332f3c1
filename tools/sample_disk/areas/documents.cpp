#include "tools/sample_disk/data/documents.h"
#include "tools/sample_disk/areas.h"

#include <string>

namespace SampleDisk {

void makeDocuments(Folder&, Folder& home, Random& random) {
    make(home, documents, random);
    make(home, packages, random);
    for (const LinkRow& row : links)
        home.link(row.path, std::string(row.target), random.between(40, 700));
}

} // namespace SampleDisk
