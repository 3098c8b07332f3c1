#pragma once

#include "platform/files/disk.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace inspect {

/// Thrown for wrong arguments. The message is one line for standard error.
struct WrongUsage {
    std::string message;
};

/// The input of an operation.
struct Request {
    std::vector<std::string> arguments;   ///< as bytes, with "\udcXX" decoded
    bool really = false;                  ///< true if "--really" was the last argument
    std::optional<platform::Disk> opened; ///< for operations on a disk

    const platform::Disk& disk() const { return *opened; }
};

/// Opens the disk named by the environment (see `platform::Disk::ofEnvironment`). Throws WrongUsage on
/// failure.
platform::Disk diskOfEnvironment();

/// Returns `text` with each "\udcXX" (XX from 80 to ff) decoded to the byte XX.
std::string bytesOf(std::string_view text);

/// Returns the number that the argument consists of. Throws WrongUsage for anything else.
std::int64_t integer(const std::string& argument);
std::uint64_t count(const std::string& argument);
double real(const std::string& argument);

} // namespace inspect
