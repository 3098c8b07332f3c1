#pragma once

#include <string>
#include <vector>

namespace sample_disk {

/// Returns the folders of the host on which volumes are mounted, or none where the system doesn't list them.
std::vector<std::string> mountPoints();

} // namespace sample_disk
