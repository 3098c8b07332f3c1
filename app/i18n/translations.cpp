#include "app/i18n/translations.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

/// The texts of one language; none while the program carries no file for it.
QJsonObject textsIn(AppLanguage language) {
    QFile file(u":/i18n/%1.json"_s.arg(rawValue(language)));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

QHash<QString, QHash<AppLanguage, QString>> readTable() {
    QHash<QString, QHash<AppLanguage, QString>> table;
    for (const AppLanguage language : allAppLanguages) {
        const QJsonObject texts = textsIn(language);
        for (auto text = texts.begin(); text != texts.end(); ++text)
            table[text.key()].insert(language, text.value().toString());
    }
    return table;
}

} // namespace

const QHash<QString, QHash<AppLanguage, QString>>& Translations::table() {
    static const QHash<QString, QHash<AppLanguage, QString>> table = readTable();
    return table;
}
