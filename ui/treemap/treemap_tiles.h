#pragma once

#include "app/models/storage_entries_model.h"
#include "core/treemap/treemap.h"

#include <QAbstractListModel>
#include <QPointer>
#include <QSizeF>
#include <QtQmlIntegration>

#include <vector>

/// List model of the treemap tiles of a StorageEntriesModel, largest first. Resets whenever the entries or
/// the area change.
class TreemapTiles : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(StorageEntriesModel* entries READ entries WRITE setEntries NOTIFY entriesChanged)
    Q_PROPERTY(QSizeF area READ area WRITE setArea NOTIFY areaChanged)
    QML_ELEMENT

public:
    enum Role {
        EntryRole = Qt::UserRole + 1, ///< row of the tile's entry in `entries`
        RectRole,                     ///< position in the area, in pixels
        NameRole,                     ///< name of the entry
        SizeRole,                     ///< formatted size of the entry
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

    QPointer<StorageEntriesModel> m_entries; ///< not owned; may be destroyed first with its screen
    QSizeF m_area;
    std::vector<core::TreemapRect> m_tiles;
};
