#pragma once

#include "platform/base/date.h"
#include "platform/files/descriptor.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace platform {

/// The values are PHAssetMediaType's.
enum class PhotoMediaType { unknown = 0, image = 1, video = 2, audio = 3 };

/// The values are PHAssetResourceType's, which has more than these.
enum class PhotoResourceType { photo = 1, video = 2, audio = 3, fullSizePhoto = 5, fullSizeVideo = 6 };

/// A file of an asset, which may not be on this disk.
struct PhotoResource {
    PhotoResourceType type;
    std::string_view originalFilename;    ///< untrusted bytes
    std::optional<std::int64_t> fileSize; ///< in bytes, if the library has an integer; may be 0 or less
};

/// A photo or video of the library. Its strings and resources are valid only during the visit.
struct PhotoAsset {
    std::string_view localIdentifier;
    PhotoMediaType mediaType = PhotoMediaType::unknown;
    std::int64_t pixelWidth = 0;
    std::int64_t pixelHeight = 0;
    std::optional<Date> creationDate;
    bool isFavorite = false;
    std::span<const PhotoResource> resources; ///< in the order of the library; may be empty
};

/// The files from which an asset can be shown.
enum class PhotoPictureKind {
    thumbnail, ///< a small rendition, or else the original
    original,
    rendition, ///< the largest rendition; none if the library made none
};

/// A file from which an asset can be shown.
struct PhotoPicture {
    Descriptor file;            ///< open for reading; may be empty
    bool isInCloud = false;     ///< the library lists the asset, but its original is not on this disk
    std::string originalPath{}; ///< on this disk; empty if the original isn't there or the path is unknown
};

/// The outcome of a deletion of assets. Except for `done`, the library is unchanged.
enum class PhotoDeletion {
    done,
    declined, ///< the user answered the system's own question with "Don't Delete"
    stopped,  ///< by the caller
    failed,
};

} // namespace platform
