#include "core/removal/reason_key.h"

namespace core::LumvaleScanner {

namespace {

/// The POSIX code of an error or of its cause; 0 when neither has one.
int posixCode(const platform::Error& error) {
    if (error.domain == platform::posixDomain)
        return error.code;
    if (error.underlying && error.underlying->domain == platform::posixDomain)
        return error.underlying->code;
    return 0;
}

} // namespace

std::string_view reasonKey(const platform::Error& error) {
    // The Mac's numbers, as errors carry them on every system.
    switch (posixCode(error)) {
    case 1:
    case 13:
        return "err_trash_permission";
    case 2:
        return "err_trash_already_gone";
    case 16:
    case 26:
        return "err_trash_busy";
    case 66:
        return "err_trash_not_empty";
    default:
        break;
    }
    if (error.domain == platform::cocoaDomain) {
        switch (error.code) {
        case 4:
            return "err_trash_already_gone";
        case 257:
        case 513:
            return "err_trash_permission";
        default:
            break;
        }
    }
    return "err_trash_unknown";
}

} // namespace core::LumvaleScanner
