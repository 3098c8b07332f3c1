#include "tools/sample_disk/pictures/bytes.h"
#include "tools/sample_disk/pictures/formats.h"

namespace SampleDisk {

std::string film(std::int64_t bytes) {
    std::string file;
    append(file, 20, 4);
    file += "ftypqt  ";
    append(file, 0x20050300, 4);
    file += "qt  ";
    // All the rest is media, which nothing indexes: as of a recording that was cut off.
    append(file, static_cast<std::uint32_t>(bytes - 20), 4);
    file += "mdat";
    return file;
}

} // namespace SampleDisk
