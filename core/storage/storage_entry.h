#pragma once

#include <cstdint>
#include <string>

namespace core {

/// A row of the storage breakdown: one folder with all that is in it.
struct StorageEntry {
    StorageEntry(std::string name, std::string path, std::int64_t sizeBytes);

    std::string id; ///< always the path
    std::string name;
    std::string path;
    std::int64_t sizeBytes;

    bool operator==(const StorageEntry&) const = default;
};

} // namespace core
