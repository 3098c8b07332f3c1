#include "app/text/display.h"

#include "platform/text/format.h"
#include "platform/text/text.h"

#include <QTextBoundaryFinder>

namespace {

/// Returns a visible replacement for an invisible character that affects others: a line break changes the
/// height of a row, and a direction mark can display "gnp.exe" as "exe.png". Common fonts have the
/// replacements, unlike Unicode's control pictures.
QChar visible(QChar c) {
    const ushort code = c.unicode();
    const bool breaks = (code >= 0x0A && code <= 0x0D) || code == 0x85 || code == 0x2028 || code == 0x2029;
    if (breaks)
        return QChar(0x21B5); // ↵
    if (code == '\t')
        return QChar(0x21E5); // ⇥
    const bool isControl = code < 0x20 || (code >= 0x7F && code < 0xA0);
    const bool isMark = code == 0x061C || code == 0x200E || code == 0x200F;
    const bool embeds = (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
    return isControl || isMark || embeds ? QChar(QChar::ReplacementCharacter) : c;
}

} // namespace

QString display::text(std::string_view bytes) {
    QString text = QString::fromStdString(platform::displayed(bytes));
    for (QChar& c : text)
        c = visible(c);
    return text;
}

QStringList display::parts(std::string_view bytes, std::size_t offset, std::size_t length) {
    return {text(bytes.substr(0, offset)), text(bytes.substr(offset, length)),
            text(bytes.substr(offset + length))};
}

QString display::name(std::string_view bytes) {
    constexpr int maxLength = 255;         // of a file name on most file systems
    constexpr std::size_t maxBytes = 1024; // at least maxLength code units in UTF-8
    const QString whole = text(bytes.substr(0, maxBytes));
    if (whole.size() <= maxLength)
        return whole;
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, whole);
    characters.setPosition(maxLength);
    if (!characters.isAtBoundary())
        characters.toPreviousBoundary();
    return whole.left(characters.position()) + QChar(u'…');
}

QString display::size(std::int64_t bytes) {
    return QString::fromStdString(platform::formatByteCount(bytes));
}

QString display::count(std::int64_t number) {
    return QString::fromStdString(platform::formatCount(number));
}

std::optional<QString> ItemDateFormat::string(std::optional<platform::Date> date) {
    if (!date)
        return std::nullopt;
    return QString::fromStdString(platform::formatMediumDate(*date));
}
