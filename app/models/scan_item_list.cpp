#include "app/models/scan_item_list.h"

#include "platform/base/bytes.h"
#include "platform/files/path.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

ScanItemList::ScanItemList(std::vector<core::ScanItem> items, std::string trash)
    : m_items(std::move(items)), m_trash(std::move(trash)) {
    std::stable_sort(m_items.begin(), m_items.end(), [](const core::ScanItem& a, const core::ScanItem& b) {
        return a.category < b.category;
    });
    m_sizes.reserve(m_items.size());
    m_isSafe.reserve(m_items.size());
    m_isInTrash.reserve(m_items.size());
    m_next.reserve(m_items.size());
    std::unordered_map<std::string_view, std::size_t> lastOfId;
    lastOfId.reserve(m_items.size());
    for (std::size_t index = 0; index < m_items.size(); ++index) {
        const core::ScanItem& item = m_items[index];
        if (m_sections.empty() || m_sections.back().category != item.category)
            m_sections.push_back({{index, index}, item.category});
        Section& section = m_sections.back();
        ++section.end;
        section.bytes = platform::addBytes(section.bytes, item.sizeBytes);
        section.safeCount += item.safeByDefault;
        m_sizes.push_back(item.sizeBytes);
        m_isSafe.push_back(item.safeByDefault);
        m_isInTrash.push_back(isInTrash(item.path));
        m_next.push_back(index);
        const auto [last, isNew] = lastOfId.try_emplace(item.id, index);
        if (!isNew) {
            std::swap(m_next[last->second], m_next[index]);
            last->second = index;
        }
    }
}

bool ScanItemList::isInTrash(std::string_view path) const {
    return !m_trash.empty() && platform::isBelow(path, m_trash);
}

std::vector<ScanItemList::Range> ScanItemList::missingIn(const ScanItemList& remaining) const {
    std::vector<Range> missing;
    auto next = remaining.items().begin();
    for (const Section& section : m_sections) {
        bool isNewRange = true;
        for (std::size_t index = section.begin; index < section.end; ++index) {
            if (next != remaining.items().end() && next->category == section.category
                && next->path == m_items[index].path) {
                ++next;
                isNewRange = true;
            } else if (std::exchange(isNewRange, false)) {
                missing.push_back({index, index + 1});
            } else {
                ++missing.back().end;
            }
        }
    }
    return missing;
}
