#pragma once

#include "app/i18n/app_language.h"

#include <QHash>
#include <QString>

/// The texts of the program, read from JSON resources with one file per language. Any thread, but not during
/// static initialization, since the resources may not be registered yet.
namespace Translations {

/// key → language → text
using Texts = QHash<QString, QHash<AppLanguage, QString>>;

/// Returns the translation table, which has every key in every language except automatic. Loaded by the first
/// call.
const Texts& table();

/// Returns the text of `key`, from the table or the additional texts: in `language`, otherwise in French,
/// otherwise the key itself.
QString text(const QString& key, AppLanguage language);

} // namespace Translations
