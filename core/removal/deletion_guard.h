#pragma once

#include "platform/files/disk.h"
#include "platform/files/entry_id.h"

#include <string>
#include <vector>

namespace core::LumvaleScanner {

/// Returns whether `path` may be deleted. Compares text only and reads no file, so callers pass a
/// standardized path. Any thread.
bool isDeletionAllowed(const std::string& path, const platform::Disk& disk = platform::Disk::current());

/// Judges the real folder of an entry, which symbolic links can make a very different one from what the
/// path's text says: ~/Library/Caches may be a link to ~/Documents. An entry may be deleted if
/// isDeletionAllowed() allows its text and this class its place. Folders are compared by identity. Reads the
/// protected and allowed folders once, when it is created; any thread.
class PlaceGuard {
public:
    explicit PlaceGuard(const platform::Disk& disk = platform::Disk::current());

    /// Returns whether the entry at `place`, to which the standardized `path` leads, may be deleted. The same
    /// tables hold for it as for text, below the home's real folder. If a symbolic link was followed, the
    /// entry must also not lie in Documents, Desktop or another folder of the user's own documents, unless
    /// the text of `path` lies in that one too. False if the folders above can't be examined.
    bool allows(const std::string& path, const platform::Place& place) const;

    /// Returns whether entries of the folder at `path` may be deleted.
    bool allowsEntriesOf(const std::string& path) const;

private:
    bool allowsBelow(const std::vector<platform::EntryId>& above) const;
    bool isAmongDocuments(const std::string& path, const std::vector<platform::EntryId>& above) const;

    using Ids = std::vector<platform::EntryId>;
    struct DocumentFolder {
        std::string path;
        platform::EntryId id;
    };

    platform::Disk m_disk;
    Ids m_keptItself;   ///< may not be deleted; their content may
    Ids m_keptWhole;    ///< may not be deleted, nor anything below them
    Ids m_allowedBelow; ///< only entries below one of these may be deleted
    std::vector<DocumentFolder> m_documentFolders;
};

} // namespace core::LumvaleScanner
