#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// What the command was called with in the wrong way: one line for standard error.
struct WrongUsage {
    std::string message;
};

/// What an operation is run with.
struct Request {
    std::vector<std::string> arguments;   ///< as bytes, "\udcXX" already read
    bool really = false;                  ///< whether "--really" came last
    std::optional<platform::Disk> opened; ///< by operations that work on one

    const platform::Disk& disk() const { return *opened; }
};

/// The disk that the environment names: LUMVALE_DISK and LUMVALE_HOME, by default this machine's and its
/// user's home; LUMVALE_USER_CACHE where set. Throws WrongUsage when it isn't there.
platform::Disk diskOfEnvironment();

/// `text` with each "\udcXX" (XX from 80 to ff) as the byte that it stands for.
std::string bytesOf(std::string_view text);

/// The whole argument as a number; throws WrongUsage for anything else.
std::int64_t integer(const std::string& argument);
std::uint64_t count(const std::string& argument);
double real(const std::string& argument);

} // namespace inspect
