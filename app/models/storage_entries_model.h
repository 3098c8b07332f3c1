#pragma once

#include "core/storage/storage_entry.h"

#include <QAbstractListModel>

#include <vector>

/// The list model of the storage breakdown, in the order of the core.
class StorageEntriesModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(int count READ count NOTIFY entriesChanged)

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        SizeRole,  ///< formatted
        ShareRole, ///< size relative to the largest row, 0 to 1
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    int count() const { return static_cast<int>(m_entries.size()); }
    void setEntries(std::vector<core::StorageEntry> entries);
    const std::vector<core::StorageEntry>& entries() const { return m_entries; }

Q_SIGNALS:
    void entriesChanged();

private:
    std::vector<core::StorageEntry> m_entries;
    std::int64_t m_largest = 1; ///< in bytes; never 0, since it is a divisor
};
