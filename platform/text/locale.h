#pragma once

#include <string>
#include <vector>

namespace platform {

/// The languages that the user prefers, first one first, as hyphenated tags ("en-US", "sr-Cyrl-RS"); may be
/// empty. Asked of the system at each call.
std::vector<std::string> preferredLanguages();

/// The locale in which the user reads figures and dates, as ICU names it ("fr_FR").
std::string userLocale();

} // namespace platform
