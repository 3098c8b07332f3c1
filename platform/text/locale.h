#pragma once

#include <string>
#include <vector>

namespace platform {

/// Returns the user's preferred languages, most preferred first, as BCP 47 tags ("en-US", "sr-Cyrl-RS"). May
/// be empty. Reads the system's settings at each call.
std::vector<std::string> preferredLanguages();

/// The categories of a locale that a user can set apart (POSIX, "Locale"): number formats, order of names,
/// date formats.
enum class LocaleCategory { numeric, collate, time };

/// Returns the ICU name of the user's locale ("fr_FR") for a category. A Mac has one locale for all.
std::string userLocale(LocaleCategory category);

} // namespace platform
