#include "core/storage/storage_entry.h"

#include <utility>

namespace core {

StorageEntry::StorageEntry(std::string entryName, std::string entryPath, std::int64_t size)
    : id(entryPath), name(std::move(entryName)), path(std::move(entryPath)), sizeBytes(size) {}

} // namespace core
