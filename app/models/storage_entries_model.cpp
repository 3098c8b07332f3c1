#include "app/models/storage_entries_model.h"

#include "app/text/display.h"

#include <algorithm>

int StorageEntriesModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : count();
}

QVariant StorageEntriesModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const core::StorageEntry& entry = m_entries[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return display::text(entry.name);
    case SizeRole:
        return display::size(entry.sizeBytes);
    case ShareRole:
        return static_cast<double>(entry.sizeBytes) / static_cast<double>(m_largest);
    default:
        return {};
    }
}

QHash<int, QByteArray> StorageEntriesModel::roleNames() const {
    return {
        {NameRole, "name"},
        {SizeRole, "size"},
        {ShareRole, "share"},
    };
}

void StorageEntriesModel::setEntries(std::vector<core::StorageEntry> entries) {
    beginResetModel();
    m_entries = std::move(entries);
    m_largest = 1;
    for (const core::StorageEntry& entry : m_entries)
        m_largest = std::max(m_largest, entry.sizeBytes);
    endResetModel();
    Q_EMIT entriesChanged();
}
