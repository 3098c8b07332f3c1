#include "app/models/installed_apps_model.h"

#include "app/text/display.h"

int InstalledAppsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_apps.size());
}

QVariant InstalledAppsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const core::InstalledApp& app = m_apps[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return display::name(app.name);
    case PathRole:
        return QByteArray::fromStdString(app.path);
    case SizeRole:
        return display::size(app.sizeBytes);
    default:
        return {};
    }
}

QHash<int, QByteArray> InstalledAppsModel::roleNames() const {
    return {{NameRole, "name"}, {PathRole, "path"}, {SizeRole, "size"}};
}

void InstalledAppsModel::setApps(std::vector<core::InstalledApp> apps) {
    beginResetModel();
    m_apps = std::move(apps);
    endResetModel();
}

void InstalledAppsModel::remove(const std::string& id) {
    for (int row = rowCount() - 1; row >= 0; --row) {
        const auto app = m_apps.begin() + row;
        if (app->id != id)
            continue;
        beginRemoveRows({}, row, row);
        m_apps.erase(app);
        endRemoveRows();
    }
}
