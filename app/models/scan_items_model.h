#pragma once

#include "core/items/scan_item.h"

#include <QAbstractListModel>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// A list model of scan items with check boxes, sorted by category; in the order given within a category. The
/// checked state belongs to the id, so rows with the same id are checked together. Ids without a row may be
/// checked, too.
class ScanItemsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        CategoryRole = Qt::UserRole + 1, ///< translation key of the category's name
        NameRole,
        PathRole,        ///< exact path on the disk, QByteArray
        ExplanationRole, ///< translation key
        SizeRole,        ///< formatted
        DateRole,        ///< formatted; empty without a date
        CheckedRole,
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setItems(std::vector<core::ScanItem> items);
    const std::vector<core::ScanItem>& rows() const { return m_rows; }

    const std::set<std::string>& checked() const { return m_checked; } ///< the checked ids
    void setChecked(std::set<std::string> ids);
    Q_INVOKABLE void toggle(int row); ///< ignores rows that do not exist

    std::int64_t checkedBytes() const; ///< total size of the checked rows, saturated

Q_SIGNALS:
    void checkedChanged();

private:
    void updateRowIsChecked();

    std::vector<core::ScanItem> m_rows;
    std::set<std::string> m_checked;
    std::vector<bool> m_rowIsChecked; ///< by row, so that checkedBytes() needs no lookups in m_checked
};
