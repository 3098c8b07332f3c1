#pragma once

#include "app/models/storage_entries_model.h"
#include "core/treemap/treemap.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QSizeF>
#include <QtQmlIntegration>

#include <vector>

/// The tiles of a map of storage entries, largest first. They are laid out anew when the entries or the area
/// change, and at no other time.
class TreemapTiles : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(StorageEntriesModel* entries READ entries WRITE setEntries NOTIFY entriesChanged)
    Q_PROPERTY(QSizeF area READ area WRITE setArea NOTIFY areaChanged)
    QML_ELEMENT

public:
    enum Role {
        EntryRole = Qt::UserRole + 1, ///< the row of the entry that the tile stands for
        RectRole,                     ///< its place in the area
        NameRole,                     ///< of the entry
        SizeRole,                     ///< of the entry, formatted
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    StorageEntriesModel* entries() const { return m_entries; }
    void setEntries(StorageEntriesModel* entries);
    QSizeF area() const { return m_area; }
    void setArea(QSizeF area);

Q_SIGNALS:
    void entriesChanged();
    void areaChanged();

private:
    void layOut();

    QPointer<StorageEntriesModel> m_entries; ///< another's, which may go first when a screen goes
    QSizeF m_area;
    std::vector<core::TreemapRect> m_tiles;
};
