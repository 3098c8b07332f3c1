#pragma once

#include "platform/base/progress.h"
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

/// The result of reading the catalogue. Data that was read is valid only for `whole`.
enum class PhotoReading {
    whole,
    changed, ///< another process wrote during the reading: repeat it
    failed,  ///< damaged, or an unknown schema
};

/// Returns the path on the disk of the home's photo library.
std::string photoLibraryFolder(const Disk& disk);

/// The catalogue of that library: an SQLite database with the schema of macOS 10.15 or later. Internal to
/// platform/. Not thread-safe.
///
/// Reading doesn't modify the library: the files, including the write-ahead log, are read without locks and
/// without temporary files. A reading checks afterwards that the files haven't changed.
class PhotoCatalogue {
public:
    /// Opens the catalogue. Fails with an error of the POSIX domain: ENOENT when there is none, EACCES or
    /// EPERM when access is denied. A file that isn't a database opens, and every reading of it fails.
    static Result<PhotoCatalogue> open(const Disk& disk);

    /// Visits every asset that is neither hidden, recently deleted, nor a copy in a shared album, oldest
    /// import first, until `visit` returns false, which counts as failed.
    PhotoReading visitAssets(const std::function<bool(const PhotoAsset&)>& visit) const;

    /// The location of an asset's original as the catalogue has it (untrusted): a folder below "originals" of
    /// the library, and a name in it.
    struct Original {
        std::string folder;
        std::string name;
    };
    PhotoReading findOriginal(std::string_view identifier, std::optional<Original>& original) const;

    /// Returns whether moveToRecentlyDeleted() may change the catalogue of the disk: it has this program's
    /// application ID, and its volume is writable.
    static bool isChangeable(const Disk& disk);

    /// Marks all visible assets among these, or none, as recently deleted. Only changes a catalogue with this
    /// program's application ID, never one that was made by a Mac. `progress` may be null.
    static PhotoDeletion moveToRecentlyDeleted(const Disk& disk, const std::vector<std::string>& identifiers,
                                               Progress* progress);

private:
    /// Identity and attributes of a file at one moment; absent for a missing file.
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
    std::optional<SqliteDatabase> m_database; ///< reads m_file and m_log
};

} // namespace platform
