#include "platform/removal/system_trash.h"

#include <Foundation/Foundation.h>

#include <memory>
#include <utility>

namespace platform {

namespace {

std::string bytes(const char* text) {
    return text == nullptr ? std::string() : std::string(text);
}

/// Returns the error with its domain, code and causes.
Error errorOf(NSError* error) {
    if (error == nil)
        return {std::string(cocoaDomain), cocoa::writeUnknown, "unknown error", nullptr};
    std::shared_ptr<const Error> underlying;
    if (id const cause = error.userInfo[NSUnderlyingErrorKey]; [cause isKindOfClass:NSError.class])
        underlying = std::make_shared<const Error>(errorOf(cause));
    return {bytes(error.domain.UTF8String), static_cast<int>(error.code),
            bytes(error.localizedDescription.UTF8String), std::move(underlying)};
}

Result<std::string> moveToTrash(const std::string& hostPath) {
    @autoreleasepool {
        // Not as a directory: the URL of a symbolic link to a folder must name the link.
        NSURL* const url = [NSURL fileURLWithFileSystemRepresentation:hostPath.c_str()
                                                          isDirectory:NO
                                                        relativeToURL:nil];
        NSURL* moved = nil;
        NSError* error = nil;
        if (![NSFileManager.defaultManager trashItemAtURL:url resultingItemURL:&moved error:&error])
            return errorOf(error);
        return moved == nil ? std::string() : bytes(moved.fileSystemRepresentation);
    }
}

} // namespace

TrashService systemTrash() {
    return moveToTrash;
}

} // namespace platform
