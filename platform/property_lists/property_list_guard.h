#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What stands between a file and the library that reads property lists. That library trusts its input: it
/// calls itself once per level, unfolds an object of a binary file at every place that refers to it, and
/// copies each time. So nothing is handed to it whose depth and unfolded size haven't been counted before.
/// For the layer's own use.
namespace platform::property_list_guard {

inline constexpr std::size_t maxFileBytes = std::size_t{16} * 1024 * 1024;
inline constexpr std::size_t maxLevels = 512;

/// What a list may take unfolded, in bytes, and what a value counts beside its own text or data.
inline constexpr std::size_t maxUnfoldedBytes = maxFileBytes;
inline constexpr std::size_t bytesPerValue = 128;

/// The bare elements and text of an XML document (UTF-8 or UTF-16, told by its byte-order mark), in UTF-8:
/// without declarations, comments and attributes, so that guard and library have nothing left to read
/// differently. None when it isn't well-formed as far as that goes, or exceeds the bounds.
std::optional<std::string> bareXml(std::string_view document);

/// Whether a binary list keeps the bounds: every object reached from the top, once per way to it.
bool isBoundedBinary(std::string_view bytes);

} // namespace platform::property_list_guard
