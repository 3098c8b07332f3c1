#pragma once

#include "tools/sample_disk/pictures/scenes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace SampleDisk {

/// What a photo library knows of one photo or film. Dates are in seconds since 1970.
struct PhotoAsset {
    std::string uuid;
    std::string directory; ///< below originals/, or absolute
    std::string file;
    std::string name; ///< that it was imported under
    std::optional<std::int64_t> bytes;
    PictureSize pixels;
    std::optional<double> created;
    std::optional<double> trashed;
    bool isFilm = false;
    bool isFavourite = false;
    bool isHidden = false;
    bool isShared = false; ///< a copy that a shared album keeps
};

/// The bytes of a library's catalogue, in the tables of macOS 11 and later, marked as a sample's own.
std::string photoCatalogue(const std::vector<PhotoAsset>& assets);

} // namespace SampleDisk
