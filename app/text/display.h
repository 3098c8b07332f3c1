#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string_view>

#include <QString>

/// The one way from the core's records to text on the screen. There is no way back: what a text shows may
/// stand for more than one path.
namespace display {

/// Bytes as text of one line: U+FFFD for what isn't UTF-8 and for characters that change the direction of
/// others, a picture for line breaks and other controls.
QString text(std::string_view bytes);

/// The same of a name that a property list gives, and which may be of any length: no more of it than leaves
/// room for what is said beside it.
QString name(std::string_view bytes);

/// A size in the user's locale.
QString size(std::int64_t bytes);

} // namespace display

/// The dates of rows.
namespace ItemDateFormat {

/// The day in the user's locale, medium style; none for no date.
std::optional<QString> string(std::optional<platform::Date> date);

} // namespace ItemDateFormat
