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

/// An item that was deleted, at least in part.
struct DeletedItem {
    std::string name;
    std::string path;
    std::int64_t sizeBytes; ///< what was deleted of it
};

/// Returns those of the items that were deleted, in their order. Any thread.
std::vector<DeletedItem> deletedItems(const std::vector<core::ScanItem>& items,
                                      const core::DeletionOutcome& outcome);

/// Records an entry for each item. Returns the entries in the order of the items.
std::vector<RecordedDeletion> recordDeletion(HistoryStore& history, const std::vector<DeletedItem>& items);

/// Corrects the history after some paths were put back: an entry loses their sizes, and is removed if all its
/// paths were put back. Returns the entries that remain, with the paths that are still deleted.
std::vector<RecordedDeletion> recordPutBack(HistoryStore& history, std::vector<RecordedDeletion> recorded,
                                            const core::PutBackOutcome& outcome);
