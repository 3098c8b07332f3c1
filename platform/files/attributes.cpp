#include "platform/files/attributes.h"

#include "platform/system/system.h"

namespace platform {

Kind kindOf(const Disk& disk, std::string_view path) {
    const Result<Place> place = disk.placeFollowed(path);
    if (!place)
        return Kind::missing;
    const std::optional<Attributes> attributes =
        system::attributesAt(place->folder.number(), place->name.c_str());
    if (!attributes)
        return Kind::missing;
    return attributes->type == EntryType::folder ? Kind::folder : Kind::file;
}

std::optional<Attributes> attributesOf(const Disk& disk, std::string_view path) {
    Result<Place> place = disk.place(path);
    if (!place) // the root has no parent folder
        place = disk.placeFollowed(path);
    if (!place)
        return std::nullopt;
    return system::attributesAt(place->folder.number(), place->name.c_str());
}

} // namespace platform
