#pragma once

#include <optional>
#include <string_view>

#include <QString>
#include <QUrl>

namespace UpdateChecker {

/// Returns the URL of a page that may be opened in the browser: HTTPS, with `domain` or a subdomain as the
/// host, and without characters that browsers interpret differently from QUrl. Returns nothing for any other
/// text. Open the returned URL, never `text`.
std::optional<QUrl> acceptablePage(std::string_view text, const QString& domain);

} // namespace UpdateChecker
