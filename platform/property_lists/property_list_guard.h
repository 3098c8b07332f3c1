#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Checks property lists before libplist parses them. libplist trusts its input: it recurses once per level,
/// and copies an object of a binary list for every reference to it. The guard rejects lists whose depth or
/// expanded size exceeds the limits. Internal to platform/.
namespace platform::property_list_guard {

inline constexpr std::size_t maxFileBytes = std::size_t{16} * 1024 * 1024;
inline constexpr std::size_t maxLevels = 512;

/// Limit of the expanded size, for which each value counts its text or data plus `bytesPerValue`.
inline constexpr std::size_t maxExpandedBytes = maxFileBytes;
inline constexpr std::size_t bytesPerValue = 128;

/// Returns the elements and text of an XML document (UTF-8, or UTF-16 with a byte-order mark) in UTF-8,
/// without declarations, comments and attributes, which the guard and libplist could interpret differently.
/// Returns nullopt when the document is malformed or exceeds the limits.
std::optional<std::string> bareXml(std::string_view document);

/// Returns true when a binary list is within the limits, counting every object once per reference to it.
bool isBoundedBinary(std::string_view bytes);

} // namespace platform::property_list_guard
