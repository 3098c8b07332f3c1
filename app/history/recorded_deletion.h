#pragma once

#include "app/history/history_store.h"
#include "core/items/scan_item.h"
#include "core/removal/put_back.h"

#include <map>
#include <string>
#include <vector>

/// An entry of the history, with the paths that it stands for and their sizes.
struct RecordedDeletion {
    HistoryEntry entry;
    std::map<std::string, std::int64_t> sizes;
};

/// Records an entry for each of the items that was deleted, at least in part.
std::vector<RecordedDeletion> recordDeletion(HistoryStore& history, const std::vector<core::ScanItem>& items,
                                             const core::DeletionOutcome& outcome);

/// Corrects the history after some paths were put back: an entry loses their sizes, and is removed if all its
/// paths were put back.
void recordPutBack(HistoryStore& history, const std::vector<RecordedDeletion>& recorded,
                   const core::PutBackOutcome& outcome);
