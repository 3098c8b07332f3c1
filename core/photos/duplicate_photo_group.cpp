#include "core/photos/duplicate_photo_group.h"

#include "platform/base/bytes.h"

#include <algorithm>
#include <utility>

namespace core {

DuplicatePhotoGroup::DuplicatePhotoGroup(std::vector<DuplicatePhotoItem> theItems)
    : items(std::move(theItems)) {
    std::vector<std::string> ids;
    for (const DuplicatePhotoItem& item : items)
        ids.push_back(item.id);
    std::sort(ids.begin(), ids.end());
    for (const std::string& one : ids)
        id += (id.empty() ? "" : "-") + one;
    // An empty optional compares less than any date.
    std::stable_sort(items.begin(), items.end(),
                     [](const DuplicatePhotoItem& a, const DuplicatePhotoItem& b) {
                         return a.creationDate < b.creationDate;
                     });
}

std::int64_t DuplicatePhotoGroup::totalWastedBytes() const {
    std::int64_t total = 0;
    std::int64_t largest = 0; // not counted: one item is kept
    for (const DuplicatePhotoItem& item : items) {
        total = platform::addBytes(total, std::min(largest, item.sizeBytes));
        largest = std::max(largest, item.sizeBytes);
    }
    return total;
}

} // namespace core
