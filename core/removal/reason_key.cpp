#include "core/removal/reason_key.h"

namespace core::LumvaleScanner {

namespace {

/// The Mac's numbers (<sys/errno.h>), which platform::Error has on every system.
enum PosixCode {
    operationNotPermitted = 1, // EPERM
    noSuchFile = 2,            // ENOENT
    permissionDenied = 13,     // EACCES
    resourceBusy = 16,         // EBUSY
    textFileBusy = 26,         // ETXTBSY
    directoryNotEmpty = 66,    // ENOTEMPTY
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
        case platform::cocoa::noSuchFile:
            return "err_trash_already_gone";
        case platform::cocoa::readNoPermission:
        case platform::cocoa::writeNoPermission:
            return "err_trash_permission";
        default:
            break;
        }
    }
    return "err_trash_unknown";
}

} // namespace core::LumvaleScanner
