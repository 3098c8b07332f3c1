#pragma once

#include <string_view>

namespace UpdateChecker {

/// Whether one version comes after another. They are numbers with dots between them, and compared as
/// such: 1.10 comes after 1.9, and 1.2 is 1.2.0. What stands between two dots and is no whole number counts
/// as 0.
bool isNewer(std::string_view version, std::string_view than);

} // namespace UpdateChecker
