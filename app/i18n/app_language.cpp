#include "app/i18n/app_language.h"

#include <algorithm>
#include <iterator>

namespace {

struct Names {
    QStringView stored;
    QStringView shown;
};

/// In the order of the enumerators.
constexpr Names names[] = {
    {u"automatic", u"Automatique"},
    {u"fr", u"Français"},
    {u"en", u"English"},
    {u"srLatin", u"Srpski (latinica)"},
    {u"srCyrillic", u"Српски (ћирилица)"},
    {u"de", u"Deutsch"},
    {u"es", u"Español"},
    {u"it", u"Italiano"},
    {u"pt", u"Português"},
    {u"ru", u"Русский"},
};
static_assert(std::size(names) == allAppLanguages.size());

const Names& namesOf(AppLanguage language) {
    return names[static_cast<std::size_t>(language)];
}

} // namespace

QString rawValue(AppLanguage language) {
    return namesOf(language).stored.toString();
}

std::optional<AppLanguage> appLanguage(const QString& raw) {
    const auto found = std::find_if(allAppLanguages.begin(), allAppLanguages.end(),
                                    [&](AppLanguage language) { return namesOf(language).stored == raw; });
    return found == allAppLanguages.end() ? std::nullopt : std::optional(*found);
}

QString displayName(AppLanguage language) {
    return namesOf(language).shown.toString();
}
