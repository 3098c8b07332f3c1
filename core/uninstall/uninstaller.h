#pragma once

#include "core/removal/deletion.h"
#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <string>
#include <vector>

namespace core::LumvaleUninstaller {

/// Deletes the related paths in their order, then the application's bundle, even when some of the related
/// paths could not be deleted. Blocks; any thread.
DeletionOutcome uninstall(const InstalledApp& app, std::vector<std::string> relatedPaths,
                          const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleUninstaller
