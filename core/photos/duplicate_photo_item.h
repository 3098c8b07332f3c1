#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string>

namespace core {

/// One photo or video of a group of identical ones.
struct DuplicatePhotoItem {
    std::string id;         ///< by which the photo library knows it
    std::string filename;   ///< that it came with; may hold anything
    std::int64_t sizeBytes; ///< of its file, here or in the cloud; at least 1
    std::optional<platform::Date> creationDate;
    bool isFavorite;
    bool isVideo;

    bool operator==(const DuplicatePhotoItem&) const = default;
};

} // namespace core
