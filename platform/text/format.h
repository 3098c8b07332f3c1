#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <string>

/// Figures and dates as people read them. `locale` as ICU names it; empty for the user's.
namespace platform {

/// A byte count in decimal units: "Zero KB", "1 byte", "999 bytes", then KB whole, MB with one decimal at
/// most, GB and larger with two; halves to even, trailing zeros dropped, a value that rounds to 1,000 in the
/// next unit. The locale's unit names and decimal sign. Any thread.
std::string formatByteCount(std::int64_t bytes, const std::string& locale = {});

enum class TimeZone { user, utc };

/// The day, in the locale's medium style ("Nov 14, 2023"). Any thread.
std::string formatMediumDate(Date date, const std::string& locale = {}, TimeZone zone = TimeZone::user);

} // namespace platform
