#pragma once

#include <string>
#include <vector>

namespace platform {

/// Returns the user's preferred languages, most preferred first, as BCP 47 tags ("en-US", "sr-Cyrl-RS"). May
/// be empty. Reads the system's settings at each call.
std::vector<std::string> preferredLanguages();

/// Returns the ICU name of the user's locale for numbers and dates ("fr_FR").
std::string userLocale();

} // namespace platform
