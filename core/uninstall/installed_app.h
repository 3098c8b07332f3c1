#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

namespace core {

/// An application found on the disk.
struct InstalledApp {
    InstalledApp(std::string name, std::optional<std::string> bundleIdentifier, std::string path,
                 std::int64_t sizeBytes);

    std::string id;   ///< always the path
    std::string name; ///< as the user knows it; may be empty
    std::optional<std::string> bundleIdentifier;
    std::string path; ///< of the bundle, as listed
    std::int64_t sizeBytes;

    bool operator==(const InstalledApp&) const = default;
};

} // namespace core
