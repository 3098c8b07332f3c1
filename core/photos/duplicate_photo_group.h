#pragma once

#include "core/photos/duplicate_photo_item.h"

#include <cstdint>
#include <string>
#include <vector>

namespace core {

/// Two or more photos or videos with the same file size, pixel size, second of creation and media type.
struct DuplicatePhotoGroup {
    /// Sorts the items and derives the id.
    explicit DuplicatePhotoGroup(std::vector<DuplicatePhotoItem> items);

    std::int64_t totalWastedBytes() const; ///< the sum of all sizes minus the largest, saturated

    std::string id;                        ///< the items' ids in byte order, joined by "-"
    std::vector<DuplicatePhotoItem> items; ///< items without a date, then oldest first

    bool operator==(const DuplicatePhotoGroup&) const = default;
};

} // namespace core
