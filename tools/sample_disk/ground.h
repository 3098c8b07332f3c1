#pragma once

#include <optional>
#include <string>

namespace SampleDisk {

/// Leaves `hostFolder` an empty folder but for the marker by which a later call knows it as ours. Gives the
/// reason, and touches nothing, when the folder holds something and no marker. Throws std::system_error when
/// the file system refuses.
std::optional<std::string> clearGround(const std::string& hostFolder);

} // namespace SampleDisk
