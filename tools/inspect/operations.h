#pragma once

#include "tools/inspect/arguments.h"
#include "tools/inspect/json_text.h"

#include <cstddef>
#include <limits>
#include <string_view>

namespace inspect {

/// Whether an operation works on the disk of the environment, and whether it changes it.
enum class DiskUse { none, reads, changes };

struct Operation {
    std::string_view name;
    std::string_view parameters; ///< for the line on wrong usage
    std::size_t least = 0;       ///< how many arguments it takes
    std::size_t most = 0;
    DiskUse disk = DiskUse::none;
    Json (*run)(const Request& request) = nullptr; ///< throws WrongUsage
};

inline constexpr std::size_t anyNumber = std::numeric_limits<std::size_t>::max();

/// The operation of this name; null when there is none.
const Operation* operation(std::string_view name);

} // namespace inspect
