#include "app/models/listed_result.h"

#include "platform/removal/trash.h"

#include <set>
#include <string>
#include <utility>

ListedResult::ListedResult(core::ScanResult scanned, const platform::Disk& disk)
    : result(std::move(scanned)),
      list(std::make_shared<const ScanItemList>(result.items, platform::trashFolder(disk))) {}

ChangedResult afterDeletion(const ListedResult& before, const core::DeletionOutcome& outcome,
                            const platform::Disk& disk) {
    auto result = std::make_shared<const ListedResult>(core::afterDeletion(before.result, outcome), disk);
    return {result, CheckedItems(result->list), before.list->missingIn(*result->list)};
}

ChangedResult afterEmptyingTrash(const ListedResult& before, const CheckedItems& checked,
                                 const core::TrashReport& report, const platform::Disk& disk) {
    auto result = std::make_shared<const ListedResult>(core::afterEmptyingTrash(before.result, report), disk);
    std::set<std::string> ids = checked.ids();
    for (const core::ScanItem& item : before.result.items)
        if (item.category == core::ScanCategory::trash)
            ids.erase(item.id);
    return {result, CheckedItems(result->list, std::move(ids)), before.list->missingIn(*result->list)};
}

ChangedResult afterPutBack(const ListedResult& before, const CheckedItems& checked,
                           const ListedResult& earlier, const core::PutBackOutcome& outcome,
                           const platform::Disk& disk) {
    auto result = std::make_shared<const ListedResult>(
        core::afterPutBack(before.result, earlier.result, outcome), disk);
    std::set<std::string> ids = checked.ids();
    ids.insert(outcome.succeeded.begin(), outcome.succeeded.end());
    return {result, CheckedItems(result->list, std::move(ids)), std::nullopt};
}
