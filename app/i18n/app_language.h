#pragma once

#include <array>
#include <optional>

#include <QString>

/// An interface language, or the wish to follow the system's; in the order of every language menu.
enum class AppLanguage { automatic, fr, en, srLatin, srCyrillic, de, es, it, pt, ru };

inline constexpr std::array allAppLanguages{
    AppLanguage::automatic, AppLanguage::fr, AppLanguage::en, AppLanguage::srLatin, AppLanguage::srCyrillic,
    AppLanguage::de,        AppLanguage::es, AppLanguage::it, AppLanguage::pt,      AppLanguage::ru,
};

/// The name under which a choice is stored.
QString rawValue(AppLanguage language);

/// The language stored under exactly this name.
std::optional<AppLanguage> appLanguage(const QString& rawValue);

/// The language's name in itself, whatever the interface's language.
QString displayName(AppLanguage language);
