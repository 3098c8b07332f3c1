#include "tools/inspect/translate.h"

#include "app/i18n/localizer.h"
#include "app/i18n/translations.h"
#include "platform/text/locale.h"

namespace inspect {

Json translate(const Request& request) {
    const auto choice = appLanguage(QString::fromStdString(request.arguments[0]));
    if (!choice)
        throw WrongUsage{"no such language: " + request.arguments[0]};
    const AppLanguage language = effectiveLanguage(*choice, platform::preferredLanguages());
    // The Localizer isn't used because it stores the language as the user's choice.
    Json texts = Json::array();
    for (std::size_t i = 1; i < request.arguments.size(); ++i) {
        const QString key = QString::fromStdString(request.arguments[i]);
        const auto ofKey = Translations::table().value(key);
        texts.push_back(ofKey.value(language, ofKey.value(AppLanguage::fr, key)).toStdString());
    }
    return texts;
}

} // namespace inspect
