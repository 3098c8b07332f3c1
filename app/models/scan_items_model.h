#pragma once

#include "core/items/scan_item.h"

#include <QAbstractListModel>

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// The rows of a list of items to tick: by category, in the order of the categories, within one in the order
/// given. A row is ticked when its id is; two rows of one id are ticked together. Ids that no row has may be
/// ticked too.
class ScanItemsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        CategoryRole = Qt::UserRole + 1, ///< the translation key of the category's name
        NameRole,
        ExplanationRole, ///< translation key
        SizeRole,        ///< formatted
        DateRole,        ///< formatted, empty when there is none
        CheckedRole,
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setItems(std::vector<core::ScanItem> items);
    const std::vector<core::ScanItem>& rows() const { return m_rows; }

    /// The ids that are ticked; whole set or one row's.
    const std::set<std::string>& checked() const { return m_checked; }
    void setChecked(std::set<std::string> ids);
    Q_INVOKABLE void toggle(int row);

    std::int64_t checkedBytes() const; ///< of the rows that are ticked; ends at the largest value

Q_SIGNALS:
    void checkedChanged();

private:
    void tickRows();

    std::vector<core::ScanItem> m_rows;
    std::set<std::string> m_checked;
    std::vector<bool> m_rowIsChecked; ///< `m_checked` by row, so that a pass over all rows looks nothing up
};
