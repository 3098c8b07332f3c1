#include "platform/text/locale.h"

#include "platform/macos/core_foundation.h"

namespace platform {

std::vector<std::string> preferredLanguages() {
    std::vector<std::string> languages;
    const Owned<CFArrayRef> tags(CFLocaleCopyPreferredLanguages());
    const CFIndex count = tags ? CFArrayGetCount(tags.get()) : 0;
    for (CFIndex i = 0; i < count; ++i)
        languages.push_back(utf8(static_cast<CFStringRef>(CFArrayGetValueAtIndex(tags.get(), i))));
    return languages;
}

std::string userLocale(LocaleCategory) {
    const Owned<CFLocaleRef> locale(CFLocaleCopyCurrent());
    const std::string name = locale ? utf8(CFLocaleGetIdentifier(locale.get())) : std::string();
    return name.empty() ? "en_US" : name;
}

} // namespace platform
