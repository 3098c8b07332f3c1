#pragma once

#include "core/uninstall/installed_app.h"

#include <QAbstractListModel>

#include <string>
#include <vector>

/// The list model of the installed applications, in the order of the core.
class InstalledAppsModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        NameRole = Qt::UserRole + 1,
        PathRole, ///< exact path on the disk, QByteArray
        SizeRole, ///< formatted
    };

    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    void setApps(std::vector<core::InstalledApp> apps);
    void remove(const std::string& id); ///< removes all rows with this id
    const std::vector<core::InstalledApp>& apps() const { return m_apps; }

private:
    std::vector<core::InstalledApp> m_apps;
};
