#pragma once

#include <optional>
#include <string>

namespace sample_disk {

/// Empties `hostFolder`, or makes it. A marker file stays, by which a later call recognizes a sample.
/// Returns the reason, and changes nothing, if the folder has content and no marker, or a volume is mounted
/// in it. Throws std::system_error when the file system refuses.
std::optional<std::string> clearTargetFolder(const std::string& hostFolder);

} // namespace sample_disk
