#pragma once

#include "core/photos/duplicate_photo_group.h"
#include "platform/photos/photo_asset.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace core::LumvalePhotoDuplicates {

/// Finds identical ones among the assets that it is given one after the other. Touches no library.
///
/// Most assets of a library have no duplicate, and there may be a million: of each little is kept, and only
/// of duplicates is an item made. They meet by sorting: in a table of hashes a million assets would lie all
/// over the memory, which takes longer than reading the library.
class PhotoGrouping {
public:
    /// Assets without a file, or with one of no known size, are left out.
    void add(const platform::PhotoAsset& asset);

    /// The groups, largest waste first; equal ones in the order in which their first assets came.
    std::vector<DuplicatePhotoGroup> groups() const;

private:
    struct Asset {
        std::int64_t sizeBytes;
        std::int64_t width;
        std::int64_t height;
        double creationDate; ///< seconds since 1970
        std::size_t texts;   ///< where in m_texts the identifier begins, the name behind it
        std::uint16_t idLength;
        std::uint16_t nameLength;
        platform::PhotoMediaType mediaType;
        bool hasDate;
        bool isFavorite;
    };
    struct Key;

    static Key key(const Asset& asset);
    DuplicatePhotoItem item(const Asset& asset) const;

    std::vector<Asset> m_assets; ///< in the order in which they came
    std::string m_texts;
};

} // namespace core::LumvalePhotoDuplicates
