#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace platform {

inline constexpr std::string_view posixDomain = "NSPOSIXErrorDomain";
inline constexpr std::string_view cocoaDomain = "NSCocoaErrorDomain";

/// Codes of the Cocoa domain that this layer returns, with the numbers of Foundation's FoundationErrors.h.
namespace cocoa {

inline constexpr int noSuchFile = 4;
inline constexpr int readNoPermission = 257;
inline constexpr int readNoSuchFile = 260;
inline constexpr int writeUnknown = 512;
inline constexpr int writeNoPermission = 513;
inline constexpr int writeFileExists = 516;
inline constexpr int writeOutOfSpace = 640;
inline constexpr int writeVolumeReadOnly = 642;
inline constexpr int propertyListCorrupt = 3840;

} // namespace cocoa

/// The reason why an operation failed, as the Mac reports it. On every host, codes of the POSIX domain are
/// the Mac's numbers: ENOTEMPTY is 66.
struct Error {
    std::string domain;
    int code = 0;
    std::string description; ///< a sentence for technical details: English, or the system's own
    std::shared_ptr<const Error> underlying; ///< the cause, or null; usually of the POSIX domain
};

/// Returns whether the cause is that the process (EMFILE) or the system (ENFILE) had no file descriptors
/// left.
bool isDescriptorShortage(const Error& error);

/// The file operation that failed. Cocoa has different codes for the same cause.
enum class FileAction { read, write, remove, move };

/// Returns the error of the POSIX domain for the host's errno, described by the host's strerror().
Error posixError(int hostErrno);

/// Returns the Cocoa error for an operation on the entry called `name` that failed with this errno. The POSIX
/// error is underlying.
Error fileError(FileAction action, int hostErrno, std::string_view name);

/// Returns the same for a cause that is already an error. The code is `cocoa::writeUnknown` unless the cause
/// is of the POSIX domain.
Error fileError(FileAction action, const Error& cause, std::string_view name);

} // namespace platform
