#pragma once

#include "platform/photos/photo_access.h"
#include "platform/photos/photo_asset.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A service of the system that gives programs access to this user's photo library: PhotoKit on a Mac. The
/// system guards the permission. Hidden and recently deleted items and copies in shared albums don't count as
/// assets. Any thread; all functions but `status` block, and may wait for an answer of the user.
struct SystemPhotoLibrary {
    std::function<PhotoAuthorization()> status;  ///< returns the permission without asking the user
    std::function<PhotoAuthorization()> request; ///< asks if it is not determined

    /// Visits every asset in the library's order, until `visit` returns false. Returns false then, and when
    /// the library is unavailable.
    std::function<bool(const std::function<bool(const PhotoAsset&)>& visit)> visitAssets;

    /// Returns a picture as PNG, scaled down: `original` stands for the best quality, `rendition` for what is
    /// there at once. Downloads nothing.
    std::function<PhotoPicture(std::string_view localIdentifier, PhotoPictureKind)> picture;

    /// Moves all of the assets, or none, to the recently deleted items, after the system has asked the user.
    /// Ignores unknown identifiers.
    std::function<PhotoDeletion(const std::vector<std::string>& localIdentifiers)> deleteAssets;
};

/// Returns this system's service, or null when it has none.
const SystemPhotoLibrary* systemPhotoLibrary();

} // namespace platform
