#include "app/history/recorded_deletion.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

std::vector<RecordedDeletion> recordDeletion(HistoryStore& history, const std::vector<core::ScanItem>& items,
                                             const core::DeletionOutcome& outcome) {
    const std::unordered_set<std::string> deleted(outcome.succeeded.begin(), outcome.succeeded.end());
    std::vector<HistoryStore::Deletion> deletions;
    std::vector<RecordedDeletion> recorded;
    const auto append = [&](const core::ScanItem& item, std::int64_t sizeBytes) {
        deletions.push_back({item.name, sizeBytes});
        recorded.push_back({{}, {{item.path, sizeBytes}}});
    };
    for (const core::ScanItem& item : items) {
        if (deleted.contains(item.path))
            append(item, item.sizeBytes);
        else if (outcome.partial && outcome.partial->path == item.path)
            append(item, outcome.partial->bytesFreed);
    }
    const std::vector<HistoryEntry> entries = history.record(deletions);
    for (std::size_t i = 0; i < recorded.size(); ++i)
        recorded[i].entry = entries[i];
    return recorded;
}

void recordPutBack(HistoryStore& history, const std::vector<RecordedDeletion>& recorded,
                   const core::PutBackOutcome& outcome) {
    const std::unordered_set<std::string> restored(outcome.succeeded.begin(), outcome.succeeded.end());
    std::vector<HistoryStore::Correction> corrections;
    for (const auto& [entry, sizes] : recorded) {
        HistoryEntry remaining = entry;
        std::size_t count = 0;
        for (const auto& [path, sizeBytes] : sizes) {
            if (!restored.contains(path))
                continue;
            ++count;
            remaining.sizeBytes = std::max<std::int64_t>(remaining.sizeBytes - sizeBytes, 0);
        }
        if (count > 0)
            corrections.push_back(
                {entry, count == sizes.size() ? std::nullopt : std::optional(std::move(remaining))});
    }
    history.correct(corrections);
}
