#pragma once

#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

/// Applications and the files that belong to them. Stateless; each operation reads the disk anew and blocks
/// until done. The searches are for background threads and never fail: unreadable entries are left out.
namespace core::LumvaleUninstaller {

/// Returns the applications in the two application folders with their sizes, in the order of their names.
std::vector<InstalledApp> scanInstalledApps(const platform::Disk& disk = platform::Disk::current());

/// Returns the same applications with size 0: no bundle is measured.
std::vector<InstalledApp> discoverApps(const platform::Disk& disk);

/// Returns the lower-case strings that mark a file as the application's: its identifier and its name without
/// spaces, each only when it is long enough to be distinctive.
std::vector<std::string> matchKeys(const InstalledApp& app);

} // namespace core::LumvaleUninstaller
