#include "app/models/startup_items_model.h"

#include "app/text/display.h"
#include "platform/files/path.h"

using namespace Qt::StringLiterals;

int StartupItemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_items.size());
}

QVariant StartupItemsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const core::StartupItem& item = m_items[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return display::name(item.displayName);
    case PathRole:
        return QByteArray::fromStdString(item.path);
    case SourceRole:
        return u"%1 · %2"_s.arg(display::name(item.label), display::name(platform::lastComponent(item.path)));
    case ExplanationRole:
        return display::text(item.explanation);
    case IsSystemWideRole:
        return item.isSystemWide;
    case BundleRole:
        return QByteArray::fromStdString(item.bundle.value_or(std::string()));
    default:
        return {};
    }
}

QHash<int, QByteArray> StartupItemsModel::roleNames() const {
    return {
        {NameRole, "name"},
        {PathRole, "path"},
        {SourceRole, "source"},
        {ExplanationRole, "explanation"},
        {IsSystemWideRole, "isSystemWide"},
        {BundleRole, "bundle"},
    };
}

void StartupItemsModel::setItems(std::vector<core::StartupItem> items) {
    beginResetModel();
    m_items = std::move(items);
    endResetModel();
}

void StartupItemsModel::remove(const std::string& id) {
    for (int row = rowCount() - 1; row >= 0; --row) {
        const auto item = m_items.begin() + row;
        if (item->id != id)
            continue;
        beginRemoveRows({}, row, row);
        m_items.erase(item);
        endRemoveRows();
    }
}
