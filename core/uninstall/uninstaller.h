#pragma once

#include "core/scan/scan_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/disk.h"

#include <vector>

/// What belongs to which application. Stateless; every operation reads the disk anew, blocks until done, may
/// be called from any thread but the interface's, and never fails: what cannot be read shortens the list.
namespace LumvaleUninstaller {

/// The applications in the two application folders, sized, in the order of their names.
std::vector<InstalledApp> scanInstalledApps(const platform::Disk& disk = platform::Disk::current());

/// What removed applications seem to have left in the home's Library, in the order of the places searched.
std::vector<ScanItem> orphanedLeftovers(const platform::Disk& disk = platform::Disk::current());

/// Virtual machines in their usual places, then what their software keeps in the Library.
std::vector<ScanItem> virtualMachineItems(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleUninstaller
