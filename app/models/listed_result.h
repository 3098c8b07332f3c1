#pragma once

#include "app/models/checked_items.h"
#include "core/scan/result_changes.h"
#include "platform/files/disk.h"

#include <memory>
#include <optional>
#include <vector>

/// The result of a scan and the list made of it. Immutable: a background job makes it, since that takes long
/// for many items, and shares it with the interface thread.
struct ListedResult {
    ListedResult(core::ScanResult scanned, const platform::Disk& disk);

    core::ScanResult result;
    CheckedItems::List list;
};

using SharedResult = std::shared_ptr<const ListedResult>;

/// A result that takes the place of an earlier one.
struct ChangedResult {
    SharedResult result;
    CheckedItems checked; ///< of its list
    /// The items of the earlier list that are missing, if there is no other difference.
    std::optional<std::vector<ScanItemList::Range>> removed;
};

// The following return the result after an operation on the disk, like the functions of the same names in
// core. Linear in the number of items; any thread.

/// Nothing is checked.
ChangedResult afterDeletion(const ListedResult& before, const core::DeletionOutcome& outcome,
                            const platform::Disk& disk);
/// Items of the Trash are unchecked.
ChangedResult afterEmptyingTrash(const ListedResult& before, const CheckedItems& checked,
                                 const core::TrashReport& report, const platform::Disk& disk);
/// The items that were put back are checked, as before their deletion.
ChangedResult afterPutBack(const ListedResult& before, const CheckedItems& checked,
                           const ListedResult& earlier, const core::PutBackOutcome& outcome,
                           const platform::Disk& disk);
