#include "platform/text/plural.h"

#include "platform/text/icu_locale.h"

#include <memory>

#include <unicode/plurrule.h>

namespace platform {

std::string pluralCategory(const std::string& language, std::int64_t number) {
    struct Latest {
        std::string language;
        std::unique_ptr<const icu::PluralRules> rules;
    };
    thread_local Latest latest;
    if (!latest.rules || latest.language != language) {
        UErrorCode status = U_ZERO_ERROR;
        latest = {language, std::unique_ptr<const icu::PluralRules>(
                                icu::PluralRules::forLocale(icuLocale(language), status))};
    }
    std::string category = "other";
    if (latest.rules) {
        category.clear();
        latest.rules->select(static_cast<double>(number)).toUTF8String(category);
    }
    return category;
}

} // namespace platform
