#include "platform/files/places.h"

#include "platform/files/path.h"

namespace platform {

std::string applicationSupportFolder(const Disk& disk) {
    return disk.inHome("Library/Application Support");
}

std::string displayName(std::string_view path) {
    return std::string(lastComponent(path));
}

} // namespace platform
