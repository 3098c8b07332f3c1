#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace platform {

/// Runs a program of the host and returns its exit status; 128 + the signal's number, as shells do, when a
/// signal ended it; -1 when it could not be started or its status is unknown.
///
/// `executable` is a path on the host; neither a shell nor PATH is used. The program inherits standard output
/// and error, has /dev/null as standard input, no other open file, and default signal handling. Blocks until
/// it has ended. Any thread.
int runProgram(const std::string& executable, const std::vector<std::string>& arguments);

/// Returns the real user ID of this process.
std::uint32_t userId();

} // namespace platform
