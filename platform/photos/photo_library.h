#pragma once

#include "platform/base/progress.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_access.h"
#include "platform/photos/photo_asset.h"
#include "platform/photos/system_photo_library.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The photo library of a disk's home. A value type, for any thread; every operation reads the library again
/// and blocks until done. Without access or without a library there are no assets. Hidden and recently
/// deleted items and copies in shared albums don't count as assets.
///
/// On this user's own disk the system's service is used if there is one, with its own permission; otherwise
/// the catalogue on the disk.
class PhotoLibrary {
public:
    PhotoLibrary(Disk disk, PhotoAccess access = PhotoAccess::ofCatalogue(),
                 const SystemPhotoLibrary* system = systemPhotoLibrary());

    PhotoAuthorization authorization() const;
    PhotoAuthorization requestAuthorization() const; ///< asks the user if it is not determined

    /// Calls `visit` for every asset in the library's order, which is that of the imports in a catalogue,
    /// until it returns false. Calls `begin` before the first one, and again when the library changed during
    /// the visit: discard all earlier assets then. Returns false without access, or when the library wasn't
    /// read completely or access was revoked during the visit; the visited assets are invalid then.
    bool visitAssets(const std::function<void()>& begin,
                     const std::function<bool(const PhotoAsset&)>& visit) const;

    /// Returns the picture of the asset, whose file may have any format. Downloads nothing. With the
    /// system's service, the path of the original is empty.
    PhotoPicture picture(std::string_view localIdentifier, PhotoPictureKind kind) const;

    /// Returns whether deleteAssets() can delete anything: false for a catalogue that was made by a Mac.
    bool isChangeable() const;

    /// Moves all of the assets, or none, to the library's recently deleted items. Ignores unknown
    /// identifiers. Refuses catalogues that were made by a Mac. `progress` may be null.
    PhotoDeletion deleteAssets(const std::vector<std::string>& localIdentifiers,
                               Progress* progress = nullptr) const;

    /// Returns whether deleteAssets() counts assets in its progress and can be stopped while it runs: false
    /// for the system's service, which can only be stopped before it begins.
    bool canStopDeletion() const { return !m_system; }

private:
    bool isOpen() const;

    Disk m_disk;
    PhotoAccess m_access;
    const SystemPhotoLibrary* m_system; ///< used instead of the catalogue unless null
};

} // namespace platform
