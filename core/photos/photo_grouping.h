#pragma once

#include "core/photos/duplicate_photo_group.h"
#include "platform/photos/photo_asset.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace core::LumvalePhotoDuplicates {

/// Groups duplicate assets.
///
/// A library can hold a million assets, of which few have duplicates. Each asset is therefore stored in
/// compact form, and items are created for duplicates only. Equal keys are found by sorting, because the
/// cache misses of a hash table of that size take longer than reading the library.
class PhotoGrouping {
public:
    /// Adds an asset. Its first photo or video represents it, or its first file if it has neither. Ignores
    /// assets without a file, without a known size, or with an identifier or file name of more than 1024
    /// bytes. Returns the size in bytes of that file; 0 for an ignored asset.
    std::int64_t add(const platform::PhotoAsset& asset);

    /// Returns the groups, largest `totalWastedBytes` first; equal ones in the order in which their first
    /// assets were added.
    std::vector<DuplicatePhotoGroup> groups() const;

private:
    struct Asset {
        std::int64_t sizeBytes;
        std::int64_t width;
        std::int64_t height;
        double creationDate; ///< seconds since 1970
        std::size_t texts;   ///< offset in m_texts of the identifier, which the name follows
        std::uint16_t idLength;
        std::uint16_t nameLength;
        platform::PhotoMediaType mediaType;
        bool hasDate;
        bool isFavorite;
    };
    struct Key;

    static Key key(const Asset& asset);
    DuplicatePhotoItem item(const Asset& asset) const;

    std::vector<Asset> m_assets; ///< in the order added
    std::string m_texts;
};

} // namespace core::LumvalePhotoDuplicates
