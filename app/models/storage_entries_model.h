#pragma once

#include "core/scan/storage_entry.h"

#include <QAbstractListModel>

#include <vector>

/// The rows of the storage breakdown, in the order in which the core gives them.
class StorageEntriesModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        SizeRole,      ///< formatted
        SizeBytesRole, ///< as a number, for areas
        ShareRole,     ///< of the largest row's size, 0 to 1
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setEntries(std::vector<StorageEntry> entries);
    const std::vector<StorageEntry>& entries() const { return m_entries; }

private:
    std::vector<StorageEntry> m_entries;
    std::int64_t m_largest = 1; ///< bytes; never 0
};
