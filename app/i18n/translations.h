#pragma once

#include "app/i18n/app_language.h"

#include <QHash>
#include <QString>

#include <cstdint>

/// The texts of the program, read from JSON resources with one file per language. Any thread, but not during
/// static initialization, since the resources may not be registered yet.
namespace Translations {

/// key → language → text. The key of one form of a text with plural forms is "key/category".
using Texts = QHash<QString, QHash<AppLanguage, QString>>;

/// Returns the translation table, which has every key in every language except automatic. Loaded by the first
/// call.
const Texts& table();

/// Returns the text of `key`, from the table or the additional texts: in `language`, otherwise in French,
/// otherwise the key itself.
QString text(const QString& key, AppLanguage language);

/// Returns the form of an additional text that the language uses for this number; "other" if there is none.
QString text(const QString& key, AppLanguage language, std::int64_t number);

} // namespace Translations
