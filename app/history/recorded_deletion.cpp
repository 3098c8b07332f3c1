#include "app/history/recorded_deletion.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

std::vector<DeletedItem> deletedItems(const std::vector<core::ScanItem>& items,
                                      const core::DeletionOutcome& outcome) {
    const std::unordered_set<std::string_view> deleted(outcome.succeeded.begin(), outcome.succeeded.end());
    std::vector<DeletedItem> found;
    for (const core::ScanItem& item : items) {
        if (deleted.contains(item.path))
            found.push_back({item.name, item.path, item.sizeBytes});
        else if (outcome.partial && outcome.partial->path == item.path)
            found.push_back({item.name, item.path, outcome.partial->bytesFreed});
    }
    return found;
}

std::vector<RecordedDeletion> recordDeletion(HistoryStore& history, const std::vector<DeletedItem>& items) {
    std::vector<HistoryStore::Deletion> deletions;
    for (const DeletedItem& item : items)
        deletions.push_back({item.name, item.sizeBytes});
    std::vector<HistoryEntry> entries = history.record(deletions);
    std::vector<RecordedDeletion> recorded;
    for (std::size_t i = 0; i < items.size(); ++i)
        recorded.push_back({std::move(entries[i]), {{items[i].path, items[i].sizeBytes}}});
    return recorded;
}

std::vector<RecordedDeletion> recordPutBack(HistoryStore& history, std::vector<RecordedDeletion> recorded,
                                            const core::PutBackOutcome& outcome) {
    const std::unordered_set<std::string_view> restored(outcome.succeeded.begin(), outcome.succeeded.end());
    std::vector<HistoryStore::Correction> corrections;
    for (auto& [entry, sizes] : recorded) {
        const HistoryEntry before = entry;
        const std::size_t count = std::erase_if(sizes, [&, &remaining = entry](const auto& deleted) {
            const bool isRestored = restored.contains(deleted.first);
            if (isRestored)
                remaining.sizeBytes = std::max<std::int64_t>(remaining.sizeBytes - deleted.second, 0);
            return isRestored;
        });
        if (count > 0)
            corrections.push_back({before, sizes.empty() ? std::nullopt : std::optional(entry)});
    }
    history.correct(corrections);
    std::erase_if(recorded, [](const RecordedDeletion& deletion) { return deletion.sizes.empty(); });
    return recorded;
}
