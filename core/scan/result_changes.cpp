#include "core/scan/result_changes.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

namespace core {

namespace {

using Paths = std::unordered_set<std::string>;

template <class Predicate>
ScanResult without(ScanResult result, const std::optional<PartialRemoval>& partial, Predicate isRemoved) {
    std::erase_if(result.items, isRemoved);
    for (ScanItem& item : result.items)
        if (partial && item.path == partial->path)
            item.sizeBytes = std::max<std::int64_t>(item.sizeBytes - partial->bytesFreed, 0);
    return ScanResult(std::move(result.items));
}

} // namespace

ScanResult afterDeletion(ScanResult result, const DeletionOutcome& outcome) {
    return without(std::move(result), outcome.partial,
                   [deleted = Paths(outcome.succeeded.begin(), outcome.succeeded.end())](
                       const ScanItem& item) { return deleted.contains(item.path); });
}

ScanResult afterEmptyingTrash(ScanResult result, const TrashReport& report) {
    return without(std::move(result), report.partial,
                   [left = Paths(report.left.begin(), report.left.end())](const ScanItem& item) {
                       return item.category == ScanCategory::trash && !left.contains(item.path);
                   });
}

ScanResult afterPutBack(const ScanResult& result, const ScanResult& earlier, const PutBackOutcome& outcome) {
    const Paths restored(outcome.succeeded.begin(), outcome.succeeded.end());
    std::vector<ScanItem> items;
    auto next = result.items.begin();
    for (const ScanItem& item : earlier.items) {
        if (next != result.items.end() && next->path == item.path)
            items.push_back(*next++);
        else if (restored.contains(item.path))
            items.push_back(item);
    }
    return ScanResult(std::move(items));
}

} // namespace core
