#pragma once

#include <cstdint>
#include <string>

namespace platform {

/// Returns the plural category of a whole number in a language, as the CLDR's cardinal rules define it:
/// "zero", "one", "two", "few", "many" or "other". `language` is a tag such as "ru". Any thread.
std::string pluralCategory(const std::string& language, std::int64_t number);

} // namespace platform
