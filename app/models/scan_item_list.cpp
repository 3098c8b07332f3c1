#include "app/models/scan_item_list.h"

#include "platform/base/bytes.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

ScanItemList::ScanItemList(std::vector<core::ScanItem> items) : m_items(std::move(items)) {
    std::stable_sort(m_items.begin(), m_items.end(), [](const core::ScanItem& a, const core::ScanItem& b) {
        return a.category < b.category;
    });
    m_sizes.reserve(m_items.size());
    m_isSafe.reserve(m_items.size());
    m_next.reserve(m_items.size());
    std::unordered_map<std::string_view, std::size_t> lastOfId;
    lastOfId.reserve(m_items.size());
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        const core::ScanItem& item = m_items[index];
        if (m_sections.empty() || m_sections.back().category != item.category)
            m_sections.push_back({item.category, index, index});
        Section& section = m_sections.back();
        ++section.end;
        section.bytes = platform::addBytes(section.bytes, item.sizeBytes);
        section.safeCount += item.safeByDefault;
        m_sizes.push_back(item.sizeBytes);
        m_isSafe.push_back(item.safeByDefault);
        m_next.push_back(index);
        const auto [last, isNew] = lastOfId.try_emplace(item.id, index);
        if (!isNew) {
            std::swap(m_next[last->second], m_next[index]);
            last->second = index;
        }
    }
}
