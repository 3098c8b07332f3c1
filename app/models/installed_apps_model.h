#pragma once

#include "core/uninstall/installed_app.h"

#include <QAbstractListModel>

#include <cstddef>
#include <string>
#include <vector>

/// The list model of the installed applications, in the order of the core or with the largest first.
class InstalledAppsModel : public QAbstractListModel {
    Q_OBJECT
    Q_PROPERTY(bool isSortedBySize READ isSortedBySize NOTIFY isSortedBySizeChanged)

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
    void remove(const std::string& id);                                    ///< removes all rows with this id
    const std::vector<core::InstalledApp>& apps() const { return m_apps; } ///< in the order of the core
    const core::InstalledApp& at(int row) const;                           ///< requires that the row exists

    bool isSortedBySize() const { return m_isSortedBySize; }
    /// Changes the order. Returns the new row of the application that was in `row`; -1 if there was none.
    Q_INVOKABLE int sortBySize(bool bySize, int row);

Q_SIGNALS:
    void isSortedBySizeChanged();

private:
    void updateOrder();

    std::vector<core::InstalledApp> m_apps;
    std::vector<std::size_t> m_order; ///< by row: the index in `m_apps`
    bool m_isSortedBySize = false;
};
