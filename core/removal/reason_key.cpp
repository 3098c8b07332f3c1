#include "core/removal/reason_key.h"

#include "core/removal/deletion.h"

namespace core::LumvaleScanner {

namespace {

/// The Mac's numbers (<sys/errno.h>), which platform::Error has on every system.
enum PosixCode {
    operationNotPermitted = 1, // EPERM
    noSuchFile = 2,            // ENOENT
    permissionDenied = 13,     // EACCES
    resourceBusy = 16,         // EBUSY
    fileExists = 17,           // EEXIST
    crossDeviceLink = 18,      // EXDEV
    textFileBusy = 26,         // ETXTBSY
    readOnlyFileSystem = 30,   // EROFS
    directoryNotEmpty = 66,    // ENOTEMPTY
    staleHandle = 70,          // ESTALE
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

std::string_view deletionReasonKey(const platform::Error& error) {
    if (isRefusal(error))
        return "err_protected";
    switch (posixCode(error)) {
    case crossDeviceLink:
        return "err_other_volume";
    case readOnlyFileSystem:
        return "err_read_only";
    default:
        break;
    }
    // The Trash's own text speaks of deleting one entry.
    const std::string_view key = reasonKey(error);
    return key == "err_trash_permission" ? "err_not_allowed" : key;
}

std::string_view putBackReasonKey(const platform::Error& error) {
    if (isRefusal(error))
        return "err_protected";
    switch (posixCode(error)) {
    case operationNotPermitted:
    case permissionDenied:
        return "err_not_allowed";
    case noSuchFile:
        return "err_not_in_trash";
    case fileExists:
    case directoryNotEmpty: // another process has filled the folder that reserved the name
        return "err_place_taken";
    case staleHandle:
        return "err_folder_gone";
    case crossDeviceLink:
        return "err_other_volume";
    case readOnlyFileSystem:
        return "err_read_only";
    default:
        return "err_trash_unknown";
    }
}

} // namespace core::LumvaleScanner
