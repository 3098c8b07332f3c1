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

/// From here down every system has the same numbers, except that 11 is the Mac's EDEADLK.
constexpr int lastCommonNumber = 34;

/// The others that file systems answer with, those over a network and in user space included.
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
    case FileAction::write:
        return "written";
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
    // Passed on as it is, an unknown number would be taken for whatever the Mac calls by it.
    return hostErrno <= lastCommonNumber ? hostErrno : EIO;
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
