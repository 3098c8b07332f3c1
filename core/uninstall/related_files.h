#pragma once

#include "core/items/scan_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the files that `app` keeps outside its bundle, all safe by default: entries of the usual folders
/// whose names contain one of its matchKeys(), ignoring case. In the order of the folders, then of the names;
/// entries of size 0 included. Blocks; not for the interface thread. Counts in `progress`, which may be null;
/// the list and its sizes are incomplete when that is stopped.
std::vector<ScanItem> relatedFiles(const InstalledApp& app,
                                   const platform::Disk& disk = platform::Disk::current(),
                                   platform::Progress* progress = nullptr);

/// A range of bytes in a name.
struct NameMatch {
    std::size_t offset;
    std::size_t length;

    bool operator==(const NameMatch&) const = default;
};

/// Returns the part of a name by which relatedFiles() finds it; nothing if it doesn't match.
std::optional<NameMatch> matchInName(const InstalledApp& app, std::string_view name);

/// Returns the user's cache folder for temporary files (DARWIN_USER_CACHE_DIR of confstr(3)); nothing if the
/// disk has none or it is outside /private/var/folders.
std::optional<std::string> darwinUserCacheDirectory(const platform::Disk& disk);

} // namespace core::LumvaleUninstaller
