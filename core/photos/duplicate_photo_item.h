#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace core {

/// A photo or video that belongs to a group of duplicates.
struct DuplicatePhotoItem {
    std::string id;         ///< local identifier in the photo library
    std::string filename;   ///< original file name; any bytes
    std::int64_t sizeBytes; ///< size of the original file, on disk or in the cloud; at least 1
    std::optional<platform::Date> creationDate;
    bool isFavorite;
    bool isVideo;
    std::int64_t pixelWidth = 0; ///< as recorded by the library; 0 or less if it has no value
    std::int64_t pixelHeight = 0;

    bool operator==(const DuplicatePhotoItem&) const = default;
};

} // namespace core
