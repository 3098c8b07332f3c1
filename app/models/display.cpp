#include "app/models/display.h"

#include "platform/format.h"
#include "platform/text.h"

QString display::text(std::string_view bytes) {
    return QString::fromStdString(platform::displayed(bytes));
}

QString display::size(std::int64_t bytes) {
    return QString::fromStdString(platform::formatByteCount(bytes));
}

std::optional<QString> ItemDateFormat::string(std::optional<platform::Date> date) {
    if (!date)
        return std::nullopt;
    return QString::fromStdString(platform::formatMediumDate(*date));
}
