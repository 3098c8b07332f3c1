#pragma once

#include "core/scan/scan_result.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

/// The cleanup engine. Stateless: each operation reads the disk again, blocks, may be called from any thread
/// and skips entries that cannot be read. Counts what it walks in `progress`, which may be null; after that
/// is stopped, it returns soon, with an incomplete result.
namespace core::LumvaleScanner {

/// Returns all items proposed for cleanup, largest first; equal sizes in the order of the sources. Walks the
/// whole home folder: not for the interface thread.
ScanResult scan(const platform::Disk& disk = platform::Disk::current(),
                platform::Progress* progress = nullptr);

} // namespace core::LumvaleScanner
