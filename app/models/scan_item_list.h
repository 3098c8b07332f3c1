#pragma once

#include "core/items/scan_item.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Scan items in the order of a list: by category, in the order given within a category. Immutable, so that a
/// background job can build one and share it with the interface thread.
class ScanItemList {
public:
    /// The items of one category.
    struct Section {
        core::ScanCategory category;
        std::size_t begin;         ///< index of the first item
        std::size_t end;           ///< index after the last item
        std::int64_t bytes = 0;    ///< total size, saturated
        std::size_t safeCount = 0; ///< number of items that are safe by default
    };

    explicit ScanItemList(std::vector<core::ScanItem> items = {});

    const std::vector<core::ScanItem>& items() const { return m_items; }
    const std::vector<Section>& sections() const { return m_sections; }

    // Facts by index, stored apart from the items: passes over a million of them take a few milliseconds.
    std::int64_t sizeBytes(std::size_t index) const { return m_sizes[index]; }
    bool isSafe(std::size_t index) const { return m_isSafe[index]; } ///< `ScanItem::safeByDefault`

    /// Returns the index of the next item with the same id, and after the last one that of the first.
    std::size_t next(std::size_t index) const { return m_next[index]; }
    bool isLastOfId(std::size_t index) const { return m_next[index] <= index; }

private:
    std::vector<core::ScanItem> m_items;
    std::vector<Section> m_sections;
    std::vector<std::int64_t> m_sizes;
    std::vector<bool> m_isSafe;
    std::vector<std::size_t> m_next;
};
