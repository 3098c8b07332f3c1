#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// What the maker says of the newest version, as it came.
struct UpdateDescription {
    std::string version; ///< any text, numbers with dots between them where all is well
    std::string page;    ///< any text, the address of the page to download it from where all is well

    /// What is longer is no description, and not worth reading.
    static constexpr std::size_t mostBytes = 9'999;
};

/// Reads a description from JSON; nothing where it isn't one. Further members may hold anything.
std::optional<UpdateDescription> decodeUpdateDescription(std::string_view json);
