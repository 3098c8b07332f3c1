#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

inline constexpr std::string_view posixDomain = "NSPOSIXErrorDomain";
inline constexpr std::string_view cocoaDomain = "NSCocoaErrorDomain";

/// Why an operation failed, in the Mac's terms on every system: POSIX codes are the Mac's numbers (ENOTEMPTY
/// is 66), whatever the host calls them.
struct Error {
    std::string domain;
    int code = 0;
    std::string description;                 ///< a sentence for technical detail, never translated
    std::shared_ptr<const Error> underlying; ///< the cause, where there is one; usually of the POSIX domain
};

/// What was being done when a file operation failed: the same cause has another Cocoa code for each.
enum class FileAction { read, write, remove, move };

/// The Mac's number for the host's errno; EIO's for one that the Mac doesn't have.
int macErrno(int hostErrno);

/// The error of the POSIX domain for the host's errno, with the system's own sentence.
Error posixError(int hostErrno);

/// The Cocoa error for an operation on an entry called `name` that failed with this errno, the POSIX error
/// underneath.
Error fileError(FileAction action, int hostErrno, std::string_view name);

/// The same, for a cause that is already an error of the POSIX domain.
Error fileError(FileAction action, const Error& cause, std::string_view name);

} // namespace platform
