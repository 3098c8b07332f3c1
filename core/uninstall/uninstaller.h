#pragma once

#include "core/removal/deletion.h"
#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

namespace core::LumvaleUninstaller {

/// Deletes the related paths in the order given, then the application's bundle, with deletePaths(). A failure
/// does not stop the other deletions. Blocks; any thread.
DeletionOutcome uninstall(const InstalledApp& app, std::vector<std::string> relatedPaths,
                          const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleUninstaller
