#include "app/update/update_page.h"

#include <algorithm>

using namespace Qt::StringLiterals;

std::optional<QUrl> UpdateChecker::acceptablePage(std::string_view text, const QString& domain) {
    // Browsers drop line breaks, take a backslash for a slash, and some letters for others.
    const bool isPlain =
        std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~' && c != '\\'; });
    if (!isPlain || domain.isEmpty())
        return std::nullopt;
    // What it reads is in lower case.
    const QUrl page(QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size())), QUrl::StrictMode);
    const QString host = page.host();
    const QString ours = domain.toLower();
    if (page.scheme() != "https"_L1 || (host != ours && !host.endsWith(u'.' + ours)))
        return std::nullopt;
    return page;
}
