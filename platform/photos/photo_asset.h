#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// By the Mac's codes.
enum class PhotoMediaType { unknown = 0, image = 1, video = 2, audio = 3 };

/// The file that an asset came as, wherever it is now.
struct PhotoResource {
    std::string_view originalFilename;    ///< may hold anything
    std::optional<std::int64_t> fileSize; ///< where the library knows it as a whole number; may be 0 or less
};

/// A photo or video as the library lists it; its texts live as long as the visit.
struct PhotoAsset {
    std::string_view localIdentifier;
    PhotoMediaType mediaType = PhotoMediaType::unknown;
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::optional<Date> creationDate;
    bool isFavorite = false;
    std::optional<PhotoResource> resource; ///< the original: a library on a disk lists no other by name
};

} // namespace platform
