#pragma once

#include "core/scan/scan_result.h"
#include "platform/files/disk.h"

/// The cleanup engine. Stateless: each operation reads the disk anew, blocks until done, may be called from
/// any thread and never fails as a whole; entries that cannot be read are left out.
namespace core::LumvaleScanner {

/// Returns everything that may be cleaned, largest first; equal sizes in the order of the sources. Reads the
/// whole home: not for the interface thread.
ScanResult scan(const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleScanner
