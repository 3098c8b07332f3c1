#include "platform/error.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace platform {

namespace {

struct Number {
    int host;
    int mac;
};

/// Codes whose numbers differ between systems. 1 to 34 are the same everywhere but for EAGAIN, which takes
/// the place of the Mac's EDEADLK.
constexpr Number numbers[] = {
    {EDEADLK, 11},   {EAGAIN, 35},    {ENOTSUP, 45}, {ELOOP, 62},   {ENAMETOOLONG, 63},
    {ENOTEMPTY, 66}, {EDQUOT, 69},    {ESTALE, 70},  {ENOLCK, 77},  {ENOSYS, 78},
    {EOVERFLOW, 84}, {ECANCELED, 89}, {EILSEQ, 92},  {ENODATA, 96},
};

/// Cocoa's code for a POSIX one, in the Mac's numbers.
int cocoaCode(FileAction action, int posix) {
    switch (posix) {
    case 1:
        return action == FileAction::read ? 257 : 513;
    case 2:
        return action == FileAction::read ? 260 : 4;
    case 13:
        return action == FileAction::read ? 257 : 513;
    case 17:
        return 516;
    case 28:
    case 69:
        return 640;
    case 30:
        return 642;
    default:
        return 512;
    }
}

std::string_view verb(FileAction action) {
    switch (action) {
    case FileAction::read:
        return "read";
    case FileAction::remove:
        return "removed";
    case FileAction::move:
        return "moved to the Trash";
    }
    return "used";
}

} // namespace

int macErrno(int hostErrno) {
    for (const Number& number : numbers) {
        if (number.host == hostErrno)
            return number.mac;
    }
    return hostErrno;
}

Error posixError(int hostErrno) {
    return {std::string(posixDomain), macErrno(hostErrno), std::strerror(hostErrno), nullptr};
}

Error fileError(FileAction action, int hostErrno, std::string_view name) {
    return fileError(action, posixError(hostErrno), name);
}

Error fileError(FileAction action, const Error& cause, std::string_view name) {
    std::string description = "\"" + std::string(name) + "\" could not be ";
    description.append(verb(action)).append(": ").append(cause.description).append(".");
    return {std::string(cocoaDomain), cocoaCode(action, cause.code), std::move(description),
            std::make_shared<const Error>(cause)};
}

} // namespace platform
