#include "app/update/update_alert.h"

#include "app/i18n/translations.h"
#include "app/text/display.h"

using namespace Qt::StringLiterals;

namespace {

AppLanguage languageOf(const QString& code) {
    if (code == "sr"_L1)
        return AppLanguage::srLatin;
    if (code == "sr-Cyrl"_L1)
        return AppLanguage::srCyrillic;
    return appLanguage(code).value_or(AppLanguage::fr);
}

} // namespace

UpdateAlert UpdateChecker::alertIn(const QString& languageCode, const QString& name, std::string_view version,
                                   const QString& current, const QUrl& page) {
    const auto text = [language = languageOf(languageCode)](const QString& key) {
        return Translations::text(key, language);
    };
    return {text(u"update_title"_s), text(u"update_message"_s).arg(display::name(version), name, current),
            text(u"update_download"_s), text(u"update_later"_s), page};
}
