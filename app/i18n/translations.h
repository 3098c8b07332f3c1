#pragma once

#include "app/i18n/app_language.h"

#include <QHash>
#include <QString>

/// Every text of the program by key, in each concrete language.
namespace Translations {

/// key → language → text. Built on the first call, from any thread; read-only afterwards.
const QHash<QString, QHash<AppLanguage, QString>>& table();

} // namespace Translations
