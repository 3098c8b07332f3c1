#pragma once

#include "core/photos/duplicate_photo_group.h"

#include <QAbstractItemModel>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// The groups of duplicates, each with its items below it, in the order given; and which items are ticked.
/// The first item of a group is the one that is kept. Ids that no item has may be ticked too, and count for
/// nothing.
class DuplicateGroupsModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role {
        // of a group
        ItemCountRole = Qt::UserRole + 1,
        ItemSizeRole, ///< of each item, formatted
        WastedRole,   ///< of all items but one, formatted
        DateRole,     ///< of each item, formatted, empty when there is none
        // of an item
        AssetIdRole, ///< bytes, by which the library knows it
        NameRole,
        IsKeptRole,
        IsFavoriteRole,
        IsVideoRole,
        CheckedRole,
    };

    using QAbstractItemModel::QAbstractItemModel;

    QModelIndex index(int row, int column = 0, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Where the items of a group lie, for a view of them alone.
    Q_INVOKABLE QModelIndex itemsOf(int group) const { return index(group); }

    /// What was ticked stays so, but for what is kept of the new groups.
    void setGroups(std::vector<core::DuplicatePhotoGroup> groups);
    const std::vector<core::DuplicatePhotoGroup>& groups() const { return m_groups; }

    /// The ids that are ticked; whole set or one item's. An item that is kept can't be toggled.
    const std::set<std::string>& checked() const { return m_checked; }
    void setChecked(std::set<std::string> ids);
    Q_INVOKABLE void toggle(int group, int item);

    std::vector<core::DuplicatePhotoItem> checkedItems() const; ///< in their order

    // Of those, known without going through them.
    int checkedCount() const { return m_checkedCount; }
    std::int64_t checkedBytes() const { return m_checkedBytes; } ///< ends at the largest value

Q_SIGNALS:
    void checkedChanged();

private:
    const core::DuplicatePhotoItem& itemAt(int group, int item) const;
    QVariant ofGroup(const core::DuplicatePhotoGroup& group, int role) const;
    QVariant ofItem(const core::DuplicatePhotoItem& item, bool isKept, int role) const;
    template <class Visit>
    void visitChecked(Visit visit) const;
    void count();

    std::vector<core::DuplicatePhotoGroup> m_groups;
    std::set<std::string> m_checked;
    int m_checkedCount = 0;
    std::int64_t m_checkedBytes = 0;
};
