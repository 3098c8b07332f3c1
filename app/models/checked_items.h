#pragma once

#include "app/models/scan_item_list.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

/// The checked items of a list, counted. The checked state belongs to the id, so items with the same id are
/// checked together. Ids without an item may be checked, too. Every change is linear in the number of items.
/// A copy takes a bit per item, so that a background job can have its own.
class CheckedItems {
public:
    using List = std::shared_ptr<const ScanItemList>;

    explicit CheckedItems(List list = std::make_shared<const ScanItemList>(), std::set<std::string> ids = {});
    /// Returns the items that are safe by default as checked.
    static CheckedItems safeByDefault(List list);

    const List& list() const { return m_list; }
    bool isChecked(std::size_t index) const { return m_isChecked[index]; }
    std::set<std::string> ids() const; ///< in a time linear in the number of items

    void check(std::size_t index, bool isChecked);
    /// Checks or unchecks the items of a section that are safe by default.
    void checkSafe(std::size_t section, bool isChecked);

    std::size_t count() const { return m_count; }               ///< number of ids
    std::size_t countInTrash() const { return m_countInTrash; } ///< those of them that are in the Trash
    std::int64_t bytes() const { return m_bytes; }              ///< total size of the items, saturated
    /// Returns the number of checked items of a section that are safe by default.
    std::size_t safeCount(std::size_t section) const { return m_safeCounts[section]; }

private:
    void set(std::size_t index, bool isChecked);
    void recount();

    List m_list;
    std::vector<bool> m_isChecked;    ///< by item
    std::set<std::string> m_otherIds; ///< checked ids without an item
    std::size_t m_count = 0;
    std::size_t m_countInTrash = 0;
    std::int64_t m_bytes = 0;
    std::vector<std::size_t> m_safeCounts; ///< by section
};
