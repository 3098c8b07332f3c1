#include "core/removal/reason_key.h"

namespace core::LumvaleScanner {

namespace {

// Error codes of macOS, which platform::Error holds on every system.

/// <sys/errno.h>
enum PosixCode {
    operationNotPermitted = 1, // EPERM
    noSuchFile = 2,            // ENOENT
    permissionDenied = 13,     // EACCES
    resourceBusy = 16,         // EBUSY
    textFileBusy = 26,         // ETXTBSY
    directoryNotEmpty = 66,    // ENOTEMPTY
};

/// <Foundation/FoundationErrors.h>
enum CocoaCode {
    fileNoSuchFile = 4,          // NSFileNoSuchFileError
    fileReadNoPermission = 257,  // NSFileReadNoPermissionError
    fileWriteNoPermission = 513, // NSFileWriteNoPermissionError
};

/// Returns the POSIX code of an error or of its cause; 0 if neither has one.
int posixCode(const platform::Error& error) {
    if (error.domain == platform::posixDomain)
        return error.code;
    if (error.underlying && error.underlying->domain == platform::posixDomain)
        return error.underlying->code;
    return 0;
}

} // namespace

std::string_view reasonKey(const platform::Error& error) {
    switch (posixCode(error)) {
    case operationNotPermitted:
    case permissionDenied:
        return "err_trash_permission";
    case noSuchFile:
        return "err_trash_already_gone";
    case resourceBusy:
    case textFileBusy:
        return "err_trash_busy";
    case directoryNotEmpty:
        return "err_trash_not_empty";
    default:
        break;
    }
    if (error.domain == platform::cocoaDomain) {
        switch (error.code) {
        case fileNoSuchFile:
            return "err_trash_already_gone";
        case fileReadNoPermission:
        case fileWriteNoPermission:
            return "err_trash_permission";
        default:
            break;
        }
    }
    return "err_trash_unknown";
}

} // namespace core::LumvaleScanner
