#include "app/models/scan_items_model.h"

#include "app/text/display.h"
#include "platform/base/bytes.h"

#include <algorithm>

int ScanItemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant ScanItemsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const auto row = static_cast<std::size_t>(index.row());
    const core::ScanItem& item = m_rows[row];
    switch (role) {
    case CategoryRole:
        return display::text(translationKey(item.category));
    case NameRole:
        return display::text(item.name);
    case PathRole:
        return QByteArray::fromStdString(item.path);
    case ExplanationRole:
        return display::text(item.explanation);
    case SizeRole:
        return display::size(item.sizeBytes);
    case DateRole:
        return ItemDateFormat::string(item.modifiedDate).value_or(QString());
    case CheckedRole:
        return m_rowIsChecked[row] == true;
    default:
        return {};
    }
}

QHash<int, QByteArray> ScanItemsModel::roleNames() const {
    return {
        {CategoryRole, "category"},       {NameRole, "name"}, {PathRole, "path"},
        {ExplanationRole, "explanation"}, {SizeRole, "size"}, {DateRole, "date"},
        {CheckedRole, "checked"},
    };
}

void ScanItemsModel::setItems(std::vector<core::ScanItem> items) {
    beginResetModel();
    m_rows = std::move(items);
    std::stable_sort(m_rows.begin(), m_rows.end(), [](const core::ScanItem& a, const core::ScanItem& b) {
        return a.category < b.category;
    });
    updateRowIsChecked();
    endResetModel();
}

std::int64_t ScanItemsModel::checkedBytes() const {
    std::int64_t total = 0;
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        if (m_rowIsChecked[row])
            total = platform::addBytes(total, m_rows[row].sizeBytes);
    return total;
}

void ScanItemsModel::setChecked(std::set<std::string> ids) {
    m_checked = std::move(ids);
    updateRowIsChecked();
    if (!m_rows.empty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CheckedRole});
    Q_EMIT checkedChanged();
}

void ScanItemsModel::toggle(int row) {
    if (row < 0 || row >= rowCount())
        return;
    const std::string& id = m_rows[static_cast<std::size_t>(row)].id;
    const bool checked = m_checked.erase(id) == 0;
    if (checked)
        m_checked.insert(id);
    // Changes all rows with the id before any signal, since a receiver may read other rows.
    std::vector<int> rows;
    for (std::size_t other = 0; other < m_rows.size(); ++other)
        if (m_rows[other].id == id) {
            m_rowIsChecked[other] = checked;
            rows.push_back(static_cast<int>(other));
        }
    for (const int changed : rows)
        Q_EMIT dataChanged(index(changed), index(changed), {CheckedRole});
    Q_EMIT checkedChanged();
}

void ScanItemsModel::updateRowIsChecked() {
    m_rowIsChecked.resize(m_rows.size());
    for (std::size_t row = 0; row < m_rows.size(); ++row)
        m_rowIsChecked[row] = m_checked.contains(m_rows[row].id);
}
