#pragma once

#include <memory>
#include <string>
#include <type_traits>

#include <CoreFoundation/CoreFoundation.h>

/// Internal to platform/macos.
namespace platform {

struct CoreFoundationDeleter {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

/// Owns an object that a function of Core Foundation with "Create" or "Copy" in its name returned; may be
/// null.
template <class Reference>
using Owned = std::unique_ptr<std::remove_pointer_t<Reference>, CoreFoundationDeleter>;

/// Returns the string as UTF-8; empty for null.
std::string utf8(CFStringRef string);

/// Returns a resource property (kCFURL…Key) of the file or folder at this path of the host, or null when the
/// system doesn't report it.
Owned<CFTypeRef> resourceProperty(const std::string& hostPath, CFStringRef key);

} // namespace platform
