#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// Runs a program of this machine to its end and gives its exit status; 128 and the signal's number, as
/// shells have it, when a signal ended it; -1 when it could not be started, or when how it ended can't be
/// known.
///
/// `executable` is a path of the host: no shell reads it and nothing is searched for. What the program prints
/// goes where this one's output goes, it has nothing to read, no file that is open here and no signal
/// blocked. Blocks until it has ended; for any thread.
int runProgram(const std::string& executable, const std::vector<std::string>& arguments);

/// The real user ID of whoever runs this program.
std::uint32_t userId();

} // namespace platform
