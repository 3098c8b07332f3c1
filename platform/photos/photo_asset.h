#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// The values are PHAssetMediaType's.
enum class PhotoMediaType { unknown = 0, image = 1, video = 2, audio = 3 };

/// The original file of an asset, which may not be on this disk.
struct PhotoResource {
    std::string_view originalFilename;    ///< untrusted bytes
    std::optional<std::int64_t> fileSize; ///< in bytes, if the library has an integer; may be 0 or less
};

/// A photo or video of the library. Its strings are valid only during the visit.
struct PhotoAsset {
    std::string_view localIdentifier;
    PhotoMediaType mediaType = PhotoMediaType::unknown;
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::optional<Date> creationDate;
    bool isFavorite = false;
    std::optional<PhotoResource> resource; ///< the original
};

} // namespace platform
