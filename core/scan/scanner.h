#pragma once

#include "core/scan/deletion.h"
#include "core/scan/health_score.h"
#include "core/scan/scan_result.h"
#include "core/scan/storage_entry.h"
#include "core/scan/trash_report.h"
#include "platform/disk.h"

#include <string>
#include <vector>

/// The cleanup engine. Stateless: every operation looks at the disk anew, blocks until done, may be called
/// from any thread and never fails as a whole; what cannot be read contributes nothing.
namespace LumvaleScanner {

/// Everything that may be cleaned, largest first; equal sizes in the order of the sources. Looks through the
/// whole home: not for the interface thread.
ScanResult scan(const platform::Disk& disk = platform::Disk::current());

/// Moves each path to the Trash, or removes it for good where it already lies there. The one door for every
/// removal that a user asks for: each path must pass the guard in its standardised form.
DeletionOutcome deletePaths(const std::vector<std::string>& paths,
                            const platform::Disk& disk = platform::Disk::current());

/// Whether the guard lets `path` go. Text only: touches no file and normalises nothing.
bool isDeletionAllowed(const std::string& path, const platform::Disk& disk = platform::Disk::current());

/// Removes everything in the Trash for good, trying once more, unlocked, what was locked.
TrashReport emptyTrash(const platform::Disk& disk = platform::Disk::current());

/// How full the home's volume is, as a score. Cheap: for any thread.
HealthScore healthScore(const platform::Disk& disk = platform::Disk::current());

/// The folders of the home and the applications folder with their sizes, largest first. Measures them all:
/// not for the interface thread.
std::vector<StorageEntry> storageBreakdown(const platform::Disk& disk = platform::Disk::current());

} // namespace LumvaleScanner
