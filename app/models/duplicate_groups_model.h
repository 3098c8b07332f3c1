#pragma once

#include "core/photos/duplicate_photo_group.h"

#include <QAbstractItemModel>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// A tree model of the groups of duplicates, with the items of a group as its children, and the set of
/// checked items. The first item of a group is kept and cannot be toggled. Ids without an item may be
/// checked; they are not counted.
class DuplicateGroupsModel : public QAbstractItemModel {
    Q_OBJECT

public:
    enum Role {
        // of groups
        ItemCountRole = Qt::UserRole + 1,
        WastedRole, ///< totalWastedBytes(), formatted
        // of groups, for their first item, and of items
        ItemSizeRole, ///< formatted
        DateRole,     ///< formatted; empty without a date
        // of items
        DimensionsRole, ///< width and height in pixels, formatted; empty if unknown
        AssetIdRole,    ///< local identifier in the photo library, QByteArray
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

    /// Returns the index of a group, the root index for a view of its items.
    Q_INVOKABLE QModelIndex itemsOf(int group) const { return index(group); }

    /// Sets the groups. The first item of each is unchecked; other checked ids are retained.
    void setGroups(std::vector<core::DuplicatePhotoGroup> groups);
    const std::vector<core::DuplicatePhotoGroup>& groups() const { return m_groups; }

    const std::set<std::string>& checked() const { return m_checked; } ///< the checked ids
    void setChecked(std::set<std::string> ids);
    Q_INVOKABLE void toggle(int group, int item); ///< ignores the first item and items that do not exist

    std::vector<core::DuplicatePhotoItem> checkedItems() const; ///< in the order of the model

    // Number and total size of the checked items, cached. The size is saturated.
    int checkedCount() const { return m_checkedCount; }
    std::int64_t checkedBytes() const { return m_checkedBytes; }

Q_SIGNALS:
    void checkedChanged();

private:
    const core::DuplicatePhotoItem& itemAt(int group, int item) const;
    QVariant groupValue(const core::DuplicatePhotoGroup& group, int role) const;
    QVariant itemValue(const core::DuplicatePhotoItem& item, bool isKept, int role) const;
    template <class Visit>
    void visitChecked(Visit visit) const;
    void updateCheckedTotals();

    std::vector<core::DuplicatePhotoGroup> m_groups;
    std::set<std::string> m_checked;
    int m_checkedCount = 0;
    std::int64_t m_checkedBytes = 0;
};
