#pragma once

#include "platform/files/disk.h"
#include "platform/photos/photo_asset.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What this program may do with the photo library.
enum class PhotoAuthorization { notDetermined, restricted, denied, authorized, limited };

/// Who says so.
struct PhotoAccess {
    std::function<PhotoAuthorization(const Disk&)> status;  ///< asks nobody
    std::function<PhotoAuthorization(const Disk&)> request; ///< asks where it is not determined, and waits

    /// This machine's answers: of a system without a question of its own, whether it lets the library be
    /// read, once the program has asked. That it has asked is kept among the machine user's own files.
    static PhotoAccess ofSystem();
};

/// What there is on the disk to show an asset by.
struct PhotoPicture {
    Descriptor file;        ///< a small rendition or else the original, open for reading; or none
    bool isInCloud = false; ///< the library knows the asset, and has neither here
};

/// The photo library of a disk's home. A value, for any thread; every operation looks at it anew and blocks
/// until done. Without access, as without a library, there are no assets. What is hidden, recently deleted or
/// a copy in a shared album is no asset either.
class PhotoLibrary {
public:
    PhotoLibrary(Disk disk, PhotoAccess access = PhotoAccess::ofSystem());

    PhotoAuthorization authorization() const { return m_access.status(m_disk); }
    PhotoAuthorization requestAuthorization() const { return m_access.request(m_disk); }

    /// Hands every asset to `visit`, in the order in which the library got them. `begin` comes before the
    /// first one, and again when the library was changed meanwhile, which makes void what was visited before.
    /// False when the catalogue can't be read to its end: then what was visited says nothing.
    bool visitAssets(const std::function<void()>& begin,
                     const std::function<void(const PhotoAsset&)>& visit) const;

    /// The picture of the asset, whose file may be of any format. Downloads nothing.
    PhotoPicture picture(std::string_view localIdentifier) const;

    /// Moves the assets to the library's recently deleted ones, all or none; identifiers that the library
    /// doesn't know are passed over. Whether that is done: a library that a Mac made is never changed.
    bool deleteAssets(const std::vector<std::string>& localIdentifiers) const;

private:
    bool isOpen() const;

    Disk m_disk;
    PhotoAccess m_access;
};

} // namespace platform
