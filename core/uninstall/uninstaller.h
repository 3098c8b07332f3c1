#pragma once

#include "core/scan/deletion.h"
#include "core/scan/scan_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/disk.h"

#include <string>
#include <vector>

/// What belongs to which application. Stateless; every operation looks at the disk anew and blocks until
/// done. The searches may be called from any thread but the interface's and never fail: what cannot be read
/// shortens the list.
namespace LumvaleUninstaller {

/// The applications in the two application folders, sized, in the order of their names.
std::vector<InstalledApp> scanInstalledApps(const platform::Disk& disk = platform::Disk::current());

/// What `app` keeps outside its bundle, all ticked: the entries of the usual places whose names contain the
/// application's identifier or its name without spaces, in any letter case. In the order of the places, then
/// of the names; those of no size too. None where identifier and name are too short to tell.
std::vector<ScanItem> relatedFiles(const InstalledApp& app,
                                   const platform::Disk& disk = platform::Disk::current());

/// What removed applications seem to have left in the home's Library, in the order of the places searched.
std::vector<ScanItem> orphanedLeftovers(const platform::Disk& disk = platform::Disk::current());

/// Virtual machines in their usual places, then what their software keeps in the Library.
std::vector<ScanItem> virtualMachineItems(const platform::Disk& disk = platform::Disk::current());

/// Deletes the related paths as given, in their order, and then the bundle, whatever became of the others.
/// Any thread.
DeletionOutcome uninstall(const InstalledApp& app, std::vector<std::string> relatedPaths,
                          const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleUninstaller
