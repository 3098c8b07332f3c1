#pragma once

#include <string>

#include <unicode/locid.h>

/// Internal to platform/.
namespace platform {

/// Returns ICU's locale with this name. Returns the root locale when the name is malformed, because ICU's
/// services fail for a bogus locale.
inline icu::Locale icuLocale(const std::string& name) {
    const icu::Locale locale(name.c_str());
    return locale.isBogus() ? icu::Locale::getRoot() : locale;
}

} // namespace platform
