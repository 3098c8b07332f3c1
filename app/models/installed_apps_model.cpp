#include "app/models/installed_apps_model.h"

#include "app/text/display.h"

#include <algorithm>
#include <numeric>

int InstalledAppsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_apps.size());
}

QVariant InstalledAppsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const core::InstalledApp& app = at(index.row());
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
    updateOrder();
    endResetModel();
}

void InstalledAppsModel::remove(const std::string& id) {
    for (int row = rowCount() - 1; row >= 0; --row) {
        if (at(row).id != id)
            continue;
        beginRemoveRows({}, row, row);
        m_apps.erase(m_apps.begin() + static_cast<std::ptrdiff_t>(m_order[static_cast<std::size_t>(row)]));
        updateOrder();
        endRemoveRows();
    }
}

const core::InstalledApp& InstalledAppsModel::at(int row) const {
    return m_apps[m_order[static_cast<std::size_t>(row)]];
}

int InstalledAppsModel::sortBySize(bool bySize, int row) {
    const QPersistentModelIndex current = index(row);
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    const std::vector<std::size_t> before = m_order;
    m_isSortedBySize = bySize;
    updateOrder();
    const QModelIndexList moved = persistentIndexList();
    QModelIndexList targets;
    for (const QModelIndex& from : moved) {
        const auto app =
            std::find(m_order.begin(), m_order.end(), before[static_cast<std::size_t>(from.row())]);
        targets.append(index(static_cast<int>(app - m_order.begin())));
    }
    changePersistentIndexList(moved, targets);
    Q_EMIT layoutChanged({}, VerticalSortHint);
    Q_EMIT isSortedBySizeChanged();
    return current.row();
}

void InstalledAppsModel::updateOrder() {
    m_order.resize(m_apps.size());
    std::iota(m_order.begin(), m_order.end(), std::size_t{0});
    if (m_isSortedBySize)
        std::stable_sort(m_order.begin(), m_order.end(), [this](std::size_t a, std::size_t b) {
            return m_apps[a].sizeBytes > m_apps[b].sizeBytes;
        });
}
