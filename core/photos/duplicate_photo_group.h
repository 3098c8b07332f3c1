#pragma once

#include "core/photos/duplicate_photo_item.h"

#include <cstdint>
#include <string>
#include <vector>

namespace core {

/// Identical photos or videos: of one file size, pixel size, second of creation and kind.
struct DuplicatePhotoGroup {
    /// Puts the items in order and names the group after them.
    explicit DuplicatePhotoGroup(std::vector<DuplicatePhotoItem> items);

    std::int64_t totalWastedBytes() const; ///< what removing all of them but one frees

    std::string id;                        ///< the items' ids in the order of their bytes, joined by "-"
    std::vector<DuplicatePhotoItem> items; ///< oldest first, those without a date before all others

    bool operator==(const DuplicatePhotoGroup&) const = default;
};

} // namespace core
