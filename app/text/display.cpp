#include "app/text/display.h"

#include "platform/text/format.h"
#include "platform/text/text.h"

#include <QTextBoundaryFinder>

namespace {

/// What stands for a character that would not be seen itself but would move others: a line break makes a row
/// of any height, a direction mark lets "gnp.exe" read "exe.png".
QChar visible(QChar c) {
    const ushort code = c.unicode();
    if (code < 0x20)
        return QChar(0x2400 + code); // Unicode's control pictures
    if (code == 0x7F)
        return QChar(0x2421);
    const bool isMark = code == 0x061C || code == 0x200E || code == 0x200F;
    const bool embeds = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    const bool breaks = code == 0x2028 || code == 0x2029;
    const bool isLateControl = code >= 0x80 && code < 0xA0;
    return isMark || embeds || breaks || isLateControl ? QChar(QChar::ReplacementCharacter) : c;
}

} // namespace

QString display::text(std::string_view bytes) {
    QString text = QString::fromStdString(platform::displayed(bytes));
    for (QChar& c : text)
        c = visible(c);
    return text;
}

QString display::name(std::string_view bytes) {
    constexpr int enough = 255; // as long as a file's may be
    constexpr std::size_t bytesOfMore = 1024;
    const QString whole = text(bytes.substr(0, bytesOfMore));
    if (whole.size() <= enough)
        return whole;
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, whole);
    characters.setPosition(enough);
    if (!characters.isAtBoundary())
        characters.toPreviousBoundary();
    return whole.left(characters.position()) + QChar(u'…');
}

QString display::size(std::int64_t bytes) {
    return QString::fromStdString(platform::formatByteCount(bytes));
}

std::optional<QString> ItemDateFormat::string(std::optional<platform::Date> date) {
    if (!date)
        return std::nullopt;
    return QString::fromStdString(platform::formatMediumDate(*date));
}
