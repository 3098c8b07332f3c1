#include "app/i18n/translations.h"

#include "platform/text/plural.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace Translations {

namespace {

Texts readTexts(const QString& folder) {
    Texts texts;
    for (const AppLanguage language : allAppLanguages) {
        QFile file(u"%1/%2.json"_s.arg(folder, rawValue(language)));
        if (!file.open(QIODevice::ReadOnly)) // there is none for automatic
            continue;
        const QJsonObject object = QJsonDocument::fromJson(file.readAll()).object();
        for (auto text = object.begin(); text != object.end(); ++text) {
            const QJsonObject forms = text.value().toObject();
            for (auto form = forms.begin(); form != forms.end(); ++form)
                texts[u"%1/%2"_s.arg(text.key(), form.key())].insert(language, form.value().toString());
            if (forms.isEmpty())
                texts[text.key()].insert(language, text.value().toString());
        }
    }
    return texts;
}

/// Texts that are not part of the table.
const Texts& additionalTexts() {
    static const Texts texts = readTexts(u":/additional_texts"_s);
    return texts;
}

} // namespace

const Texts& table() {
    static const Texts texts = readTexts(u":/i18n"_s);
    return texts;
}

QString text(const QString& key, AppLanguage language) {
    for (const Texts* texts : {&table(), &additionalTexts()}) {
        const auto found = texts->constFind(key);
        if (found != texts->constEnd())
            return found->value(language, found->value(AppLanguage::fr, key));
    }
    return key;
}

QString text(const QString& key, AppLanguage language, std::int64_t number) {
    // Identifiers of languages start with the ISO 639-1 code.
    const std::string code = rawValue(language).left(2).toStdString();
    const QString form = u"%1/%2"_s.arg(key, QString::fromStdString(platform::pluralCategory(code, number)));
    const auto found = additionalTexts().constFind(form);
    const bool isTranslated = found != additionalTexts().constEnd() && found->contains(language);
    return isTranslated ? (*found)[language] : text(key + u"/other"_s, language);
}

} // namespace Translations
