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
    std::string name; ///< display name; may be empty
    std::optional<std::string> bundleIdentifier;
    std::string path;       ///< path of the bundle
    std::int64_t sizeBytes; ///< of the bundle; 0 until it is measured

    bool operator==(const InstalledApp&) const = default;
};

} // namespace core
