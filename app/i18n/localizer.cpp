#include "app/i18n/localizer.h"

#include "app/i18n/translations.h"
#include "platform/text/locale.h"

#include <QSettings>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

const QString languageKey = u"LumvaleLanguage"_s;

AppLanguage storedLanguage() {
    return appLanguage(QSettings().value(languageKey).toString()).value_or(AppLanguage::automatic);
}

} // namespace

Localizer::Localizer(QObject* parent) : QObject(parent), m_language(storedLanguage()) {}

Localizer& Localizer::shared() {
    static Localizer localizer;
    return localizer;
}

void Localizer::setLanguage(AppLanguage language) {
    m_language = language;
    QSettings().setValue(languageKey, rawValue(language));
    Q_EMIT languageChanged();
}

AppLanguage Localizer::effective() const {
    const AppLanguage choice = m_language;
    // Called for every text on the screen, so the system is queried only if necessary.
    return choice == AppLanguage::automatic ? effectiveLanguage(choice, platform::preferredLanguages())
                                            : choice;
}

QString Localizer::text(const QString& key) const {
    return Translations::text(key, effective());
}

QString Localizer::text(const QString& key, std::int64_t number) const {
    return Translations::text(key, effective(), number);
}

void Localizer::setLanguageIndex(int index) {
    if (index >= 0 && index < static_cast<int>(allAppLanguages.size()))
        setLanguage(allAppLanguages[static_cast<std::size_t>(index)]);
}

QString Localizer::languageName() const {
    return displayName(m_language);
}

QStringList Localizer::languageNames() const {
    QStringList names;
    for (const AppLanguage language : allAppLanguages)
        names.append(displayName(language));
    return names;
}

QString Localizer::tr(int, const QString& key) const {
    return text(key);
}

AppLanguage effectiveLanguage(AppLanguage choice, const std::vector<std::string>& preferred) {
    if (choice != AppLanguage::automatic)
        return choice;
    if (preferred.empty())
        return AppLanguage::fr;

    static constexpr std::pair<QLatin1StringView, AppLanguage> languages[]{
        {"en"_L1, AppLanguage::en}, {"de"_L1, AppLanguage::de}, {"es"_L1, AppLanguage::es},
        {"it"_L1, AppLanguage::it}, {"pt"_L1, AppLanguage::pt}, {"ru"_L1, AppLanguage::ru},
    };
    const QString tag = QString::fromStdString(preferred.front()).toLower();
    for (const auto& [prefix, language] : languages)
        if (tag.startsWith(prefix))
            return language;
    if (tag.startsWith("sr"_L1))
        return tag.contains("cyrl"_L1) ? AppLanguage::srCyrillic : AppLanguage::srLatin;
    return AppLanguage::fr;
}

QString tr(const QString& key) {
    return Localizer::shared().text(key);
}

QString tr(const QString& key, std::int64_t number) {
    return Localizer::shared().text(key, number);
}

QString localizedCategoryName(core::ScanCategory category) {
    const std::string_view key = translationKey(category);
    return tr(QString::fromUtf8(key.data(), static_cast<qsizetype>(key.size())));
}
