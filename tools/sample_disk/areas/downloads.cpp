#include "tools/sample_disk/data/downloads.h"
#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/data/odd_names.h"
#include "tools/sample_disk/data/trash.h"

#include <span>
#include <string>

namespace SampleDisk {

namespace {

void makeOddNames(Folder& folder, std::span<const std::string_view> names, Random& random) {
    for (const std::string_view name : names)
        folder.oddFile(name, random.between(2, 900) * 1_KB, random.between(40, 900));
}

} // namespace

void makeDownloads(Folder&, Folder& home, Random& random) {
    Folder folder = home.folder("Downloads", 0);
    make(folder, downloads, random);
}

void makeTrash(Folder&, Folder& home, Random& random) {
    Folder trash = home.folder(".Trash", 0);
    trash.setMode(0700);
    make(trash, trashed, random);
    makeOddNames(trash, std::span(oddNames).first(oddNamesInSight), random);
    Folder recovered = trash.folder("Recovered files", 64);
    makeOddNames(recovered, oddNames, random);
    recovered.oddFile(std::string(251, 'n') + ".txt", 3_KB, 77);
    trash.lock("locked contract.pdf");
    trash.lock("Wedding/master.psd");
}

} // namespace SampleDisk
