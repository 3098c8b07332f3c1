#include "app/models/checked_items.h"

#include "platform/base/bytes.h"

#include <algorithm>
#include <utility>

CheckedItems::CheckedItems(List list, std::set<std::string> ids)
    : m_list(std::move(list)), m_isChecked(m_list->items().size()), m_otherIds(std::move(ids)) {
    if (!m_otherIds.empty()) {
        std::vector<const std::string*> found;
        for (std::size_t index = 0; index < m_isChecked.size(); ++index) {
            const std::string& id = m_list->items()[index].id;
            m_isChecked[index] = m_otherIds.contains(id);
            if (m_isChecked[index])
                found.push_back(&id);
        }
        for (const std::string* id : found)
            m_otherIds.erase(*id);
    }
    recount();
}

CheckedItems CheckedItems::safeByDefault(List list) {
    CheckedItems checked(std::move(list));
    for (std::size_t index = 0; index < checked.m_isChecked.size(); ++index)
        if (checked.m_list->isSafe(index))
            checked.set(index, true);
    checked.recount();
    return checked;
}

std::set<std::string> CheckedItems::ids() const {
    std::set<std::string> ids = m_otherIds;
    for (std::size_t index = 0; index < m_isChecked.size(); ++index)
        if (m_isChecked[index])
            ids.insert(m_list->items()[index].id);
    return ids;
}

void CheckedItems::check(std::size_t index, bool isChecked) {
    set(index, isChecked);
    recount();
}

void CheckedItems::checkSafe(std::size_t section, bool isChecked) {
    const ScanItemList::Section& items = m_list->sections()[section];
    for (std::size_t index = items.begin; index < items.end; ++index)
        if (m_list->isSafe(index))
            set(index, isChecked);
    recount();
}

/// Sets all items with the id of this one.
void CheckedItems::set(std::size_t index, bool isChecked) {
    for (std::size_t same = index; m_isChecked[same] != isChecked; same = m_list->next(same))
        m_isChecked[same] = isChecked;
}

/// Counts in one pass, which takes less time than a frame, rather than by differences.
void CheckedItems::recount() {
    m_count = m_otherIds.size();
    m_countInTrash = static_cast<std::size_t>(std::ranges::count_if(
        m_otherIds, [this](const std::string& path) { return m_list->isInTrash(path); }));
    m_bytes = 0;
    m_safeCounts.clear();
    for (const ScanItemList::Section& section : m_list->sections()) {
        std::size_t& safeCount = m_safeCounts.emplace_back();
        for (std::size_t index = section.begin; index < section.end; ++index)
            if (m_isChecked[index]) {
                const bool isCounted = m_list->isLastOfId(index);
                m_count += isCounted;
                m_countInTrash += isCounted && m_list->isInTrash(index);
                m_bytes = platform::addBytes(m_bytes, m_list->sizeBytes(index));
                safeCount += m_list->isSafe(index);
            }
    }
}
