#include "platform/system/running_application.h"

#include <AppKit/AppKit.h>

namespace platform {

bool isApplicationRunning(const Disk& disk, const std::string& bundleIdentifier) {
    if (!disk.isOfThisMachine())
        return false;
    @autoreleasepool {
        NSString* const identifier = [NSString stringWithUTF8String:bundleIdentifier.c_str()];
        return identifier != nil // for bytes that aren't UTF-8
               && [NSRunningApplication runningApplicationsWithBundleIdentifier:identifier].count > 0;
    }
}

} // namespace platform
