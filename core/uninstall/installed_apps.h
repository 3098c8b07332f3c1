#pragma once

#include "core/uninstall/installed_app.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

/// Applications and their files. Stateless: every operation reads the disk again, blocks, may be called from
/// any thread and skips entries that cannot be read. Searches are too slow for the interface thread.
namespace core::LumvaleUninstaller {

/// Returns the applications in /Applications and in the home's Applications folder, with their sizes, in the
/// order of their names. Leaves out some applications of the system and this program. Counts in
/// `progress`, which may be null; the list and its sizes are incomplete when that is stopped.
std::vector<InstalledApp> scanInstalledApps(const platform::Disk& disk = platform::Disk::current(),
                                            platform::Progress* progress = nullptr);

/// Returns the same applications without measuring them: all sizes are 0. Returns some of them soon after
/// `progress`, which may be null, is stopped. Counts nothing in it, except folders and bundles as unread if
/// no descriptors are left.
std::vector<InstalledApp> discoverApps(const platform::Disk& disk, platform::Progress* progress = nullptr);

/// Returns the lower-case strings by which file names are matched to the application: its bundle identifier
/// (at least 4 characters) and its name without spaces (at least 3).
std::vector<std::string> matchKeys(const InstalledApp& app);

} // namespace core::LumvaleUninstaller
