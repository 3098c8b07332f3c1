#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

#include <cstddef>
#include <limits>
#include <string_view>

namespace inspect {

/// An operation's use of the disk named by the environment.
enum class DiskUse { none, reads, changes };

struct Operation {
    std::string_view name;
    std::string_view parameters; ///< for the usage message
    std::size_t minArguments = 0;
    std::size_t maxArguments = 0;
    DiskUse disk = DiskUse::none;
    Json (*run)(const Request& request) = nullptr; ///< throws WrongUsage
};

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// Returns the operation with this name, or null when there is none.
const Operation* operation(std::string_view name);

} // namespace inspect
