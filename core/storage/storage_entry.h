#pragma once

#include <cstdint>
#include <string>

namespace core {

/// A folder of the storage breakdown.
struct StorageEntry {
    StorageEntry(std::string name, std::string path, std::int64_t sizeBytes);

    std::string id;   ///< always the path
    std::string name; ///< display name
    std::string path;
    std::int64_t sizeBytes; ///< of the whole content

    bool operator==(const StorageEntry&) const = default;
};

} // namespace core
