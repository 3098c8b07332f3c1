#pragma once

#include <optional>
#include <string_view>

#include <QString>
#include <QUrl>

namespace UpdateChecker {

/// The address of a page that may be opened in the browser: https, on `domain` or below it, and so plain that
/// a browser can't read it in another way. Nothing for any other text. What is opened is what is returned,
/// not the text.
std::optional<QUrl> acceptablePage(std::string_view text, const QString& domain);

} // namespace UpdateChecker
