#include "platform/base/error.h"

#include <cerrno>
#include <cstring>
#include <utility>

namespace platform {

namespace {

struct Number {
    int host;
    int mac;
};

/// Every system has the same numbers up to this one, except that 11 is EDEADLK on the Mac.
constexpr int maxCommonNumber = 34;

constexpr int macDiskQuotaExceeded = 69; ///< EDQUOT

/// The other numbers that file systems fail with, including network and user-space file systems.
constexpr Number numbers[] = {
    {EDEADLK, 11},      {EAGAIN, 35},      {EINPROGRESS, 36},      {EALREADY, 37},
    {ENOTSOCK, 38},     {EMSGSIZE, 40},    {ENOTSUP, 45},          {EADDRINUSE, 48},
    {ENETDOWN, 50},     {ENETUNREACH, 51}, {ENETRESET, 52},        {ENOBUFS, 55},
    {ECONNABORTED, 53}, {ECONNRESET, 54},  {EISCONN, 56},          {ENOTCONN, 57},
    {ESHUTDOWN, 58},    {ETIMEDOUT, 60},   {ECONNREFUSED, 61},     {ELOOP, 62},
    {ENAMETOOLONG, 63}, {EHOSTDOWN, 64},   {EHOSTUNREACH, 65},     {ENOTEMPTY, 66},
    {EUSERS, 68},       {EDQUOT, 69},      {ESTALE, 70},           {EREMOTE, 71},
    {ENOLCK, 77},       {ENOSYS, 78},      {EOVERFLOW, 84},        {ECANCELED, 89},
    {EIDRM, 90},        {ENOMSG, 91},      {EILSEQ, 92},           {EBADMSG, 94},
    {EMULTIHOP, 95},    {ENODATA, 96},     {ENOLINK, 97},          {EPROTO, 100},
    {ETIME, 101},       {EOWNERDEAD, 105}, {ENOTRECOVERABLE, 104},
};

/// Returns Cocoa's code for a POSIX code in the Mac's numbering.
int cocoaCode(FileAction action, int macNumber) {
    switch (macNumber) {
    case EPERM:
    case EACCES:
        return action == FileAction::read ? cocoa::readNoPermission : cocoa::writeNoPermission;
    case ENOENT:
        return action == FileAction::read ? cocoa::readNoSuchFile : cocoa::noSuchFile;
    case EEXIST:
        return cocoa::writeFileExists;
    case ENOSPC:
    case macDiskQuotaExceeded:
        return cocoa::writeOutOfSpace;
    case EROFS:
        return cocoa::writeVolumeReadOnly;
    default:
        return cocoa::writeUnknown;
    }
}

std::string_view verb(FileAction action) {
    switch (action) {
    case FileAction::read:
        return "read";
    case FileAction::write:
        return "written";
    case FileAction::remove:
        return "removed";
    case FileAction::move:
        return "moved to the Trash";
    }
    return "used";
}

/// Returns the Mac's number for the host's errno, EIO's for one that the Mac doesn't have.
int macErrno(int hostErrno) {
    for (const Number& number : numbers) {
        if (number.host == hostErrno)
            return number.mac;
    }
    // An unknown number must not be passed on: on the Mac it means a different error.
    return hostErrno <= maxCommonNumber ? hostErrno : EIO;
}

} // namespace

Error posixError(int hostErrno) {
    return {std::string(posixDomain), macErrno(hostErrno), std::strerror(hostErrno), nullptr};
}

bool isDescriptorShortage(const Error& error) {
    const Error& cause = error.underlying ? *error.underlying : error;
    return cause.domain == posixDomain && (cause.code == EMFILE || cause.code == ENFILE);
}

Error fileError(FileAction action, int hostErrno, std::string_view name) {
    return fileError(action, posixError(hostErrno), name);
}

Error fileError(FileAction action, const Error& cause, std::string_view name) {
    std::string description = "\"" + std::string(name) + "\" could not be ";
    description.append(verb(action)).append(": ").append(cause.description).append(".");
    const int code = cause.domain == posixDomain ? cocoaCode(action, cause.code) : cocoa::writeUnknown;
    return {std::string(cocoaDomain), code, std::move(description), std::make_shared<const Error>(cause)};
}

} // namespace platform
