#pragma once

#include "platform/base/date.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include <QString>
#include <QStringList>

/// Converts values of core records to text for the screen. The conversion is lossy: different paths may give
/// the same text, so a text is never converted back.
namespace display {

/// Returns bytes as text of one line: "↵" for line breaks, "⇥" for tabs, U+FFFD for invalid UTF-8, other
/// controls and Unicode's direction controls.
QString text(std::string_view bytes);

/// Returns three texts: the bytes before a range, those of the range, and those after it.
QStringList parts(std::string_view bytes, std::size_t offset, std::size_t length);

/// Returns text() of a name from a file, truncated to 255 UTF-16 code units and "…" at a character
/// boundary.
QString name(std::string_view bytes);

/// Returns a size in bytes formatted in the user's locale.
QString size(std::int64_t bytes);

/// Returns a number formatted in the user's locale.
QString count(std::int64_t number);

} // namespace display

/// Dates of items.
namespace ItemDateFormat {

/// Returns the day in the user's locale, medium style; nothing without a date.
std::optional<QString> string(std::optional<platform::Date> date);

} // namespace ItemDateFormat
