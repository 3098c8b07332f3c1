#pragma once

#include "platform/files/disk.h"

#include <string>

namespace core::LumvaleScanner {

/// Returns whether `path` may be deleted. Compares text only and reads no file, so callers pass a
/// standardized path. Any thread.
bool isDeletionAllowed(const std::string& path, const platform::Disk& disk = platform::Disk::current());

} // namespace core::LumvaleScanner
