#include "app/update/update_page.h"

#include <algorithm>

using namespace Qt::StringLiterals;

std::optional<QUrl> UpdateChecker::acceptablePage(std::string_view text, const QString& domain) {
    // Only the characters of RFC 3986: browsers remove line breaks, treat a backslash as a slash, and map
    // some non-ASCII letters to ASCII; QUrl accepts "|" and the desktop then opens nothing.
    static constexpr std::string_view symbols = "-._~:/?#[]@!$&'()*+,;=%";
    const bool isPlain = std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')
               || symbols.find(c) != std::string_view::npos;
    });
    if (!isPlain || domain.isEmpty())
        return std::nullopt;
    // QUrl converts the host to lower case.
    const QUrl page(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())), QUrl::StrictMode);
    const QString host = page.host();
    const QString ours = domain.toLower();
    if (!page.isValid() || page.scheme() != "https"_L1 || (host != ours && !host.endsWith(u'.' + ours)))
        return std::nullopt;
    return page;
}
