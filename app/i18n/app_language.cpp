#include "app/i18n/app_language.h"

#include <algorithm>

using namespace Qt::StringLiterals;

QString rawValue(AppLanguage language) {
    switch (language) {
    case AppLanguage::automatic:
        return u"automatic"_s;
    case AppLanguage::fr:
        return u"fr"_s;
    case AppLanguage::en:
        return u"en"_s;
    case AppLanguage::srLatin:
        return u"srLatin"_s;
    case AppLanguage::srCyrillic:
        return u"srCyrillic"_s;
    case AppLanguage::de:
        return u"de"_s;
    case AppLanguage::es:
        return u"es"_s;
    case AppLanguage::it:
        return u"it"_s;
    case AppLanguage::pt:
        return u"pt"_s;
    case AppLanguage::ru:
        return u"ru"_s;
    }
    Q_UNREACHABLE();
}

std::optional<AppLanguage> appLanguage(const QString& raw) {
    const auto found = std::find_if(allAppLanguages.begin(), allAppLanguages.end(),
                                    [&](AppLanguage language) { return rawValue(language) == raw; });
    return found == allAppLanguages.end() ? std::nullopt : std::optional(*found);
}

QString displayName(AppLanguage language) {
    switch (language) {
    case AppLanguage::automatic:
        return u"Automatique"_s;
    case AppLanguage::fr:
        return u"Français"_s;
    case AppLanguage::en:
        return u"English"_s;
    case AppLanguage::srLatin:
        return u"Srpski (latinica)"_s;
    case AppLanguage::srCyrillic:
        return u"Српски (ћирилица)"_s;
    case AppLanguage::de:
        return u"Deutsch"_s;
    case AppLanguage::es:
        return u"Español"_s;
    case AppLanguage::it:
        return u"Italiano"_s;
    case AppLanguage::pt:
        return u"Português"_s;
    case AppLanguage::ru:
        return u"Русский"_s;
    }
    Q_UNREACHABLE();
}
