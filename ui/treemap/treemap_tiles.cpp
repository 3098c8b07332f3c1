#include "ui/treemap/treemap_tiles.h"

#include <QRectF>

int TreemapTiles::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_tiles.size());
}

QVariant TreemapTiles::data(const QModelIndex& index, int role) const {
    if (!m_entries || !checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto& [id, rect] = m_tiles[static_cast<std::size_t>(index.row())];
    const int entry = static_cast<int>(id);
    switch (role) {
    case EntryRole:
        return entry;
    case RectRole:
        return QRectF(rect.x, rect.y, rect.width, rect.height);
    case NameRole:
        return m_entries->data(m_entries->index(entry), StorageEntriesModel::NameRole);
    case SizeRole:
        return m_entries->data(m_entries->index(entry), StorageEntriesModel::SizeRole);
    default:
        return {};
    }
}

QHash<int, QByteArray> TreemapTiles::roleNames() const {
    return {
        {EntryRole, "entry"},
        {RectRole, "rect"},
        {NameRole, "name"},
        {SizeRole, "size"},
    };
}

void TreemapTiles::setEntries(StorageEntriesModel* entries) {
    if (m_entries == entries)
        return;
    if (m_entries)
        m_entries->disconnect(this);
    m_entries = entries;
    if (m_entries)
        connect(m_entries, &StorageEntriesModel::entriesChanged, this, &TreemapTiles::layOut);
    layOut();
    Q_EMIT entriesChanged();
}

void TreemapTiles::setArea(QSizeF area) {
    if (m_area == area)
        return;
    m_area = area;
    layOut();
    Q_EMIT areaChanged();
}

void TreemapTiles::layOut() {
    std::vector<core::TreemapItem> items;
    if (m_entries)
        for (const core::StorageEntry& entry : m_entries->entries())
            items.push_back({items.size(), static_cast<double>(entry.sizeBytes)});
    beginResetModel();
    m_tiles = core::Treemap::squarify(items, {0, 0, m_area.width(), m_area.height()});
    endResetModel();
}
