#pragma once

#include <array>
#include <optional>

#include <QString>

/// The user's choice of the interface language; automatic follows the system. In the order of the language
/// menu.
enum class AppLanguage { automatic, fr, en, srLatin, srCyrillic, de, es, it, pt, ru };

inline constexpr std::array allAppLanguages{
    AppLanguage::automatic, AppLanguage::fr, AppLanguage::en, AppLanguage::srLatin, AppLanguage::srCyrillic,
    AppLanguage::de,        AppLanguage::es, AppLanguage::it, AppLanguage::pt,      AppLanguage::ru,
};

/// Returns the identifier by which a choice is stored in the settings.
QString rawValue(AppLanguage language);

/// Returns the choice with this identifier; nothing if there is none. Case-sensitive.
std::optional<AppLanguage> appLanguage(const QString& rawValue);

/// Returns the name of a language in that language.
QString displayName(AppLanguage language);
