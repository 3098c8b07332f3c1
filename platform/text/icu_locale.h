#pragma once

#include "platform/text/locale.h"

#include <string>

#include <unicode/locid.h>

/// For the layer's own use.
namespace platform {

/// ICU's locale of this name: the user's when the name is empty, the root when it is malformed (ICU would
/// refuse to work at all with such a one).
inline icu::Locale icuLocale(const std::string& name) {
    const icu::Locale locale((name.empty() ? userLocale() : name).c_str());
    return locale.isBogus() ? icu::Locale::getRoot() : locale;
}

} // namespace platform
