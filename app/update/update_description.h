#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The description of the newest version as received, not validated.
struct UpdateDescription {
    std::string version; ///< any text; normally numbers separated by dots
    std::string page;    ///< any text; normally the URL of the download page

    /// Limit for the size of a description.
    static constexpr std::size_t maxBytes = 9'999;
};

/// Returns the description in `json`; nothing unless it is an object with the strings "version" and "page".
/// Ignores unknown members.
std::optional<UpdateDescription> decodeUpdateDescription(std::string_view json);
