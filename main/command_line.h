#pragma once

#include "platform/files/disk.h"

#include <optional>
#include <string>
#include <variant>

/// The command line of the program: lumvale [DISK [HOME]], --help or --version. Options with one dash are
/// left to Qt.
namespace CommandLine {

/// Ends the program with this status, after printing a text to standard output (0) or standard error.
struct Exit {
    int status = 0;
    std::string text;
};

/// The disk to open; nullopt if the user has to choose one.
using Start = std::variant<std::optional<platform::Disk>, Exit>;

/// Returns how to start, from the arguments or otherwise from LUMVALE_DISK (see
/// platform::Disk::ofEnvironment). If neither names a disk, a Mac's own disk is opened. A disk without a
/// Mac's homes is refused.
Start start(int argc, const char* const* argv);

} // namespace CommandLine
