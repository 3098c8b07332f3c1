#include "platform/macos/core_foundation.h"

namespace platform {

std::string utf8(CFStringRef string) {
    if (string == nullptr)
        return {};
    const CFIndex size =
        CFStringGetMaximumSizeForEncoding(CFStringGetLength(string), kCFStringEncodingUTF8) + 1;
    std::string text(static_cast<std::size_t>(size), '\0');
    if (!CFStringGetCString(string, text.data(), size, kCFStringEncodingUTF8))
        return {};
    text.resize(text.find('\0'));
    return text;
}

Owned<CFTypeRef> resourceProperty(const std::string& hostPath, CFStringRef key) {
    const Owned<CFURLRef> url(
        CFURLCreateFromFileSystemRepresentation(nullptr, reinterpret_cast<const UInt8*>(hostPath.data()),
                                                static_cast<CFIndex>(hostPath.size()), false));
    CFTypeRef value = nullptr;
    if (!url || !CFURLCopyResourcePropertyForKey(url.get(), key, &value, nullptr))
        return nullptr;
    return Owned<CFTypeRef>(value);
}

} // namespace platform
