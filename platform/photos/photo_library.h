#pragma once

#include "platform/files/disk.h"
#include "platform/photos/photo_access.h"
#include "platform/photos/photo_asset.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The file from which an asset can be shown.
struct PhotoPicture {
    Descriptor file;        ///< a small rendition or else the original, open for reading; may be empty
    bool isInCloud = false; ///< the library lists the asset, but has neither file on this disk
};

/// The photo library of a disk's home. A value type, for any thread; every operation reads the library again
/// and blocks until done. Without access or without a library there are no assets. Hidden and recently
/// deleted items and copies in shared albums don't count as assets.
class PhotoLibrary {
public:
    PhotoLibrary(Disk disk, PhotoAccess access = PhotoAccess::ofSystem());

    PhotoAuthorization authorization() const { return m_access.status(m_disk); }
    PhotoAuthorization requestAuthorization() const { return m_access.request(m_disk); }

    /// Calls `visit` for every asset, oldest import first. Calls `begin` before the first one, and again when
    /// the library changed during the visit: discard all earlier assets then. Returns false when the
    /// catalogue can't be read completely; the visited assets are invalid then.
    bool visitAssets(const std::function<void()>& begin,
                     const std::function<void(const PhotoAsset&)>& visit) const;

    /// Returns the picture of the asset, whose file may have any format. Downloads nothing.
    PhotoPicture picture(std::string_view localIdentifier) const;

    /// Moves all of the assets, or none, to the library's recently deleted items, and returns true on
    /// success. Ignores unknown identifiers. Refuses libraries that were made by a Mac.
    bool deleteAssets(const std::vector<std::string>& localIdentifiers) const;

private:
    bool isOpen() const;

    Disk m_disk;
    PhotoAccess m_access;
};

} // namespace platform
