#include "core/removal/partial_removal.h"

#include "platform/walk/walk.h"

#include <algorithm>
#include <span>

namespace core {

PartialRemoval partialRemoval(const platform::Disk& disk, const std::string& path, std::int64_t sizeBefore) {
    const std::int64_t sizeNow = platform::measure(disk, std::span(&path, 1)).front();
    return {path, std::max<std::int64_t>(sizeBefore - sizeNow, 0)};
}

} // namespace core
