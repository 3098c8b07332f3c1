#pragma once

#include "core/items/scan_item.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

/// Scan items in the order of a list: by category, in the order given within a category. Immutable, so that a
/// background job can build one and share it with the interface thread.
class ScanItemList {
public:
    /// Items by index, up to the one before `end`.
    struct Range {
        std::size_t begin;
        std::size_t end;

        std::size_t count() const { return end - begin; }
    };

    /// The items of one category.
    struct Section : Range {
        core::ScanCategory category;
        std::int64_t bytes = 0;    ///< total size, saturated
        std::size_t safeCount = 0; ///< number of items that are safe by default
    };

    /// `trash` is the path of the folder that items of the Trash are in; none are if it is empty.
    explicit ScanItemList(std::vector<core::ScanItem> items = {}, std::string trash = {});

    const std::vector<core::ScanItem>& items() const { return m_items; }
    const std::vector<Section>& sections() const { return m_sections; }
    bool isInTrash(std::string_view path) const;

    /// Returns the items that are missing in `remaining`, which was made by removing some. Each range is
    /// within a section; in order.
    std::vector<Range> missingIn(const ScanItemList& remaining) const;

    // Facts by index, stored apart from the items: passes over a million of them take a few milliseconds.
    std::int64_t sizeBytes(std::size_t index) const { return m_sizes[index]; }
    bool isSafe(std::size_t index) const { return m_isSafe[index]; } ///< `ScanItem::safeByDefault`
    bool isInTrash(std::size_t index) const { return m_isInTrash[index]; }

    /// Returns the index of the next item with the same id, and after the last one that of the first.
    std::size_t next(std::size_t index) const { return m_next[index]; }
    bool isLastOfId(std::size_t index) const { return m_next[index] <= index; }

private:
    std::vector<core::ScanItem> m_items;
    std::string m_trash;
    std::vector<Section> m_sections;
    std::vector<std::int64_t> m_sizes;
    std::vector<bool> m_isSafe;
    std::vector<bool> m_isInTrash;
    std::vector<std::size_t> m_next;
};
