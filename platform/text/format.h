#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <string>

/// Localized formats of numbers, byte counts and dates. `locale` is an ICU locale name; empty for the user's
/// locale.
namespace platform {

/// Returns a byte count in decimal units: "Zero KB", "1 byte", "999 bytes", then whole KB, MB with at most
/// one decimal, GB and larger units with at most two. Rounds half to even, drops trailing zeros, and shows a
/// value that rounds to 1,000 in the next unit. Unit names and decimal sign are the locale's. Any thread.
std::string formatByteCount(std::int64_t bytes, const std::string& locale = {});

/// Returns a whole number with the locale's digits and grouping ("12,345"). Any thread.
std::string formatCount(std::int64_t count, const std::string& locale = {});

enum class TimeZone { user, utc };

/// Returns the day in the locale's medium style ("Nov 14, 2023"). Any thread.
std::string formatMediumDate(Date date, const std::string& locale = {}, TimeZone zone = TimeZone::user);

} // namespace platform
