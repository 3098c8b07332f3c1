#include "platform/files/display_name.h"

#include "platform/files/path.h"
#include "platform/macos/core_foundation.h"
#include "platform/system/system.h"

namespace platform {

std::string displayName(const Disk& disk, std::string_view path) {
    std::string name;
    if (const Result<Place> place = disk.placeFollowed(path)) {
        const std::string hostPath = joined(system::hostPath(place->folder.number()), place->name);
        const Owned<CFTypeRef> localized = resourceProperty(hostPath, kCFURLLocalizedNameKey);
        name = utf8(static_cast<CFStringRef>(localized.get()));
    }
    return name.empty() ? std::string(lastComponent(path)) : name;
}

} // namespace platform
