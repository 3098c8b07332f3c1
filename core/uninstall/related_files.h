#pragma once

#include "core/items/scan_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <optional>
#include <string>
#include <vector>

namespace core::LumvaleUninstaller {

/// Returns the files that `app` keeps outside its bundle, all ticked: the entries of the usual folders whose
/// names contain one of its match keys, in any letter case. In the order of the folders, then of the names;
/// entries of size 0 included. Empty when the application has no match key.
std::vector<ScanItem> relatedFiles(const InstalledApp& app,
                                   const platform::Disk& disk = platform::Disk::current());

/// Returns the folder of the user's temporary caches; none where the disk has none, or names a folder outside
/// /private/var/folders.
std::optional<std::string> darwinUserCacheDirectory(const platform::Disk& disk);

} // namespace core::LumvaleUninstaller
