#pragma once

#include <string_view>

namespace UpdateChecker {

/// Returns whether `version` is newer than `than`. Versions are compared number by number: 1.10 is newer than
/// 1.9, and 1.2 equals 1.2.0. Empty components are skipped; any other that is not a whole number counts as 0.
bool isNewer(std::string_view version, std::string_view than);

} // namespace UpdateChecker
