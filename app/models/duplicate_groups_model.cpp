#include "app/models/duplicate_groups_model.h"

#include "app/text/display.h"
#include "platform/base/bytes.h"

#include <QByteArray>

#include <utility>

namespace {

// Internal id of the indexes of groups. Indexes of items have the row of their group.
constexpr quintptr topLevel = ~quintptr{0};

QString dimensions(const core::DuplicatePhotoItem& item) {
    if (item.pixelWidth <= 0 || item.pixelHeight <= 0)
        return {};
    return QStringLiteral("%1 × %2").arg(item.pixelWidth).arg(item.pixelHeight);
}

} // namespace

QModelIndex DuplicateGroupsModel::index(int row, int column, const QModelIndex& parent) const {
    if (!hasIndex(row, column, parent))
        return {};
    return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) : topLevel);
}

QModelIndex DuplicateGroupsModel::parent(const QModelIndex& index) const {
    if (!index.isValid() || index.internalId() == topLevel)
        return {};
    return createIndex(static_cast<int>(index.internalId()), 0, topLevel);
}

int DuplicateGroupsModel::rowCount(const QModelIndex& parent) const {
    if (!parent.isValid())
        return static_cast<int>(m_groups.size());
    if (parent.internalId() != topLevel)
        return 0;
    return static_cast<int>(m_groups[static_cast<std::size_t>(parent.row())].items.size());
}

int DuplicateGroupsModel::columnCount(const QModelIndex&) const {
    return 1;
}

QVariant DuplicateGroupsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    if (index.internalId() == topLevel)
        return groupValue(m_groups[static_cast<std::size_t>(index.row())], role);
    return itemValue(itemAt(index.parent().row(), index.row()), index.row() == 0, role);
}

const core::DuplicatePhotoItem& DuplicateGroupsModel::itemAt(int group, int item) const {
    return m_groups[static_cast<std::size_t>(group)].items[static_cast<std::size_t>(item)];
}

QVariant DuplicateGroupsModel::groupValue(const core::DuplicatePhotoGroup& group, int role) const {
    switch (role) {
    case ItemCountRole:
        return static_cast<int>(group.items.size());
    case WastedRole:
        return display::size(group.totalWastedBytes());
    case ItemSizeRole:
    case DateRole:
        return itemValue(group.items.front(), true, role);
    default:
        return {};
    }
}

QVariant DuplicateGroupsModel::itemValue(const core::DuplicatePhotoItem& item, bool isKept, int role) const {
    switch (role) {
    case ItemSizeRole:
        return display::size(item.sizeBytes);
    case DateRole:
        return ItemDateFormat::string(item.creationDate).value_or(QString());
    case DimensionsRole:
        return dimensions(item);
    case AssetIdRole:
        return QByteArray::fromStdString(item.id);
    case NameRole:
        return display::name(item.filename);
    case IsKeptRole:
        return isKept;
    case IsFavoriteRole:
        return item.isFavorite;
    case IsVideoRole:
        return item.isVideo;
    case CheckedRole:
        return m_checked.contains(item.id);
    default:
        return {};
    }
}

QHash<int, QByteArray> DuplicateGroupsModel::roleNames() const {
    return {
        {ItemCountRole, "itemCount"},   {ItemSizeRole, "itemSize"},
        {WastedRole, "wasted"},         {DateRole, "date"},
        {AssetIdRole, "assetID"},       {NameRole, "name"},
        {DimensionsRole, "dimensions"}, {IsKeptRole, "isKept"},
        {IsVideoRole, "isVideo"},       {CheckedRole, "checked"},
        {IsFavoriteRole, "isFavorite"},
    };
}

void DuplicateGroupsModel::setGroups(std::vector<core::DuplicatePhotoGroup> groups) {
    beginResetModel();
    m_groups = std::move(groups);
    for (const core::DuplicatePhotoGroup& group : m_groups)
        m_checked.erase(group.items.front().id);
    updateCheckedTotals();
    endResetModel();
    Q_EMIT checkedChanged();
}

void DuplicateGroupsModel::setChecked(std::set<std::string> ids) {
    const std::set<std::string> before = std::exchange(m_checked, std::move(ids));
    updateCheckedTotals();
    for (int group = 0; group < rowCount(); ++group)
        for (int item = 0; item < rowCount(index(group)); ++item) {
            const std::string& id = itemAt(group, item).id;
            const QModelIndex changed = index(item, 0, index(group));
            if (before.contains(id) != m_checked.contains(id))
                Q_EMIT dataChanged(changed, changed, {CheckedRole});
        }
    Q_EMIT checkedChanged();
}

void DuplicateGroupsModel::toggle(int group, int item) {
    const QModelIndex toggled = index(item, 0, index(group));
    if (!toggled.parent().isValid() || item == 0)
        return;
    const std::string& id = itemAt(group, item).id;
    if (m_checked.erase(id) == 0)
        m_checked.insert(id);
    updateCheckedTotals();
    Q_EMIT dataChanged(toggled, toggled, {CheckedRole});
    Q_EMIT checkedChanged();
}

template <class Visit>
void DuplicateGroupsModel::visitChecked(Visit visit) const {
    for (const core::DuplicatePhotoGroup& group : m_groups)
        for (const core::DuplicatePhotoItem& item : group.items)
            if (m_checked.contains(item.id))
                visit(item);
}

std::vector<core::DuplicatePhotoItem> DuplicateGroupsModel::checkedItems() const {
    std::vector<core::DuplicatePhotoItem> items;
    visitChecked([&](const core::DuplicatePhotoItem& item) { items.push_back(item); });
    return items;
}

void DuplicateGroupsModel::updateCheckedTotals() {
    m_checkedCount = 0;
    m_checkedBytes = 0;
    if (m_checked.empty())
        return;
    visitChecked([this](const core::DuplicatePhotoItem& item) {
        ++m_checkedCount;
        m_checkedBytes = platform::addBytes(m_checkedBytes, item.sizeBytes);
    });
}
