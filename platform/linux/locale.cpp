#include "platform/text/locale.h"

#include <algorithm>
#include <cstdlib>
#include <initializer_list>
#include <optional>
#include <string_view>

namespace platform {

namespace {

/// Returns the value of the first of these variables that is set and not empty.
std::string_view firstSet(std::initializer_list<const char*> variables) {
    for (const char* variable : variables) {
        const char* value = std::getenv(variable);
        if (value != nullptr && *value != '\0')
            return value;
    }
    return {};
}

bool isLetters(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
}

std::string_view scriptNamed(std::string_view modifier) {
    if (modifier == "latin")
        return "Latn";
    if (modifier == "cyrillic")
        return "Cyrl";
    if (modifier == "devanagari")
        return "Deva";
    return {};
}

/// Returns language, script and region of a POSIX locale name, joined by `separator`: "sr-Latn-RS" for
/// "sr_RS.UTF-8@latin". Returns nullopt for "C", "POSIX" and names without a language.
std::optional<std::string> localeName(std::string_view posixName, char separator) {
    std::string_view modifier;
    if (const std::size_t at = posixName.find('@'); at != std::string_view::npos) {
        modifier = posixName.substr(at + 1);
        posixName = posixName.substr(0, at);
    }
    posixName = posixName.substr(0, posixName.find('.'));
    const std::size_t underscore = posixName.find('_');
    const std::string_view language = posixName.substr(0, underscore);
    if (language.size() < 2 || language.size() > 3 || !isLetters(language))
        return std::nullopt;
    std::string name(language);
    if (const std::string_view script = scriptNamed(modifier); !script.empty())
        name.append(1, separator).append(script);
    if (underscore != std::string_view::npos)
        name.append(1, separator).append(posixName.substr(underscore + 1));
    return name;
}

const char* variable(LocaleCategory category) {
    switch (category) {
    case LocaleCategory::numeric:
        return "LC_NUMERIC";
    case LocaleCategory::collate:
        return "LC_COLLATE";
    case LocaleCategory::time:
        break;
    }
    return "LC_TIME";
}

} // namespace

std::vector<std::string> preferredLanguages() {
    const std::string_view locale = firstSet({"LC_ALL", "LC_MESSAGES", "LANG"});
    const std::optional<std::string> ofLocale = localeName(locale, '-');
    // The C locale disables LANGUAGE, as in GNU gettext.
    if (!ofLocale)
        return {};
    std::vector<std::string> languages;
    std::string_view names = firstSet({"LANGUAGE"});
    while (!names.empty()) {
        const std::string_view name = names.substr(0, names.find(':'));
        names.remove_prefix(std::min(names.size(), name.size() + 1));
        if (std::optional<std::string> language = localeName(name, '-'))
            languages.push_back(*std::move(language));
    }
    if (languages.empty())
        languages.push_back(*ofLocale);
    return languages;
}

std::string userLocale(LocaleCategory category) {
    return localeName(firstSet({"LC_ALL", variable(category), "LANG"}), '_').value_or("en_US");
}

} // namespace platform
