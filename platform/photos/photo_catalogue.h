#pragma once

#include "platform/files/attributes.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_asset.h"
#include "platform/sqlite/sqlite.h"
#include "platform/system/system.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// How a look into the catalogue ended: only a whole one says anything.
enum class PhotoReading {
    whole,
    changed, ///< somebody wrote meanwhile: once more
    failed,  ///< damaged, or of no known form
};

/// The photo library of a disk's home, as a path of the disk.
std::string photoLibraryFolder(const Disk& disk);

/// The catalogue of that library: an SQLite database in the form of macOS 10.15 or later. For the layer's own
/// use, by one thread at a time.
///
/// Looking into one leaves no trace: its files are read where they lie, log included, with no lock and
/// nothing laid down beside them. Whether they stayed the same meanwhile is asked afterwards.
class PhotoCatalogue {
public:
    /// Fails with an error of the POSIX domain: ENOENT where there is none, EACCES or EPERM where the system
    /// refuses it. A file in its place that is no database opens too, and fails in every reading.
    static Result<PhotoCatalogue> open(const Disk& disk);

    /// Every asset that is shown: neither hidden, nor recently deleted, nor only a copy in a shared album. In
    /// the order in which the library got them.
    PhotoReading visitAssets(const std::function<void(const PhotoAsset&)>& visit) const;

    /// Where the original of a shown asset is kept: a folder of the library's originals, and a name in it,
    /// both as the catalogue has them.
    struct Original {
        std::string folder;
        std::string name;
    };
    PhotoReading findOriginal(std::string_view identifier, std::optional<Original>& original) const;

    /// Marks shown assets recently deleted, all or none, those that there are. Only in a catalogue that was
    /// made by this system, and says so; a Mac's own is never written. Whether it is done.
    static bool moveToRecentlyDeleted(const Disk& disk, const std::vector<std::string>& identifiers);

private:
    /// What a file is at one moment; all members absent where there is none.
    struct Stamp {
        std::optional<Attributes> attributes;
        std::optional<system::Identity> identity;
    };
    using Stamps = std::array<Stamp, 3>; ///< of the database, its log and its journal

    explicit PhotoCatalogue(Place place) : m_place(std::move(place)) {}
    Stamps stamps() const;
    bool isUnchanged() const;
    PhotoReading reading(bool isWhole) const;

    Place m_place;
    Stamps m_asOpened;
    Descriptor m_file;
    Descriptor m_log;
    std::optional<SqliteDatabase> m_database; ///< reads the two above
};

} // namespace platform
