#pragma once

#include "core/startup/startup_item.h"

#include <QAbstractListModel>

#include <string>
#include <vector>

/// The list model of the startup items, in the order of the core.
class StartupItemsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        PathRole,        ///< exact path on the disk, QByteArray
        SourceRole,      ///< the label and the name of its file
        ExplanationRole, ///< translation key
        IsSystemWideRole,
        BundleRole, ///< path of its application as bytes, for the icon; empty without one
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setItems(std::vector<core::StartupItem> items);
    void remove(const std::string& id); ///< removes all rows with this id
    const std::vector<core::StartupItem>& items() const { return m_items; }

private:
    std::vector<core::StartupItem> m_items;
};
