#pragma once

#include "platform/text/locale.h"

#include <string>

#include <unicode/locid.h>

/// Internal to platform/.
namespace platform {

/// Returns ICU's locale with this name: the user's when the name is empty, the root locale when it is
/// malformed, because ICU's services fail for a bogus locale.
inline icu::Locale icuLocale(const std::string& name) {
    const icu::Locale locale((name.empty() ? userLocale() : name).c_str());
    return locale.isBogus() ? icu::Locale::getRoot() : locale;
}

} // namespace platform
