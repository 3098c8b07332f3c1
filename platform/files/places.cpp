#include "platform/files/places.h"

namespace platform {

std::string applicationSupportFolder(const Disk& disk) {
    return disk.inHome("Library/Application Support");
}

} // namespace platform
