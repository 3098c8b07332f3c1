#include "app/models/history_model.h"

#include "app/text/display.h"

#include <algorithm>
#include <iterator>

HistoryModel::HistoryModel(const HistoryStore& history, QObject* parent)
    : QAbstractListModel(parent), m_history(history), m_rows(history.entries()) {
    connect(&history, &HistoryStore::entriesChanged, this, &HistoryModel::updateRows);
}

int HistoryModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant HistoryModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const HistoryEntry& entry = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return display::name(entry.name);
    case SizeRole:
        return display::size(entry.sizeBytes);
    case DateRole:
        return ItemDateFormat::string(entry.date()).value_or(QString());
    default:
        return {};
    }
}

QHash<int, QByteArray> HistoryModel::roleNames() const {
    return {{NameRole, "name"}, {SizeRole, "size"}, {DateRole, "date"}};
}

void HistoryModel::updateRows() {
    // The store normally inserts in front and removes at the end. After any other change the result is the
    // same, but more rows are replaced than necessary.
    const std::vector<HistoryEntry>& entries = m_history.entries();
    std::size_t added = entries.size() - std::min(entries.size(), m_rows.size());
    const auto firstKept = [&] {
        return std::next(entries.begin(), static_cast<std::ptrdiff_t>(added));
    };
    while (!std::equal(firstKept(), entries.end(), m_rows.begin()))
        ++added;

    const std::size_t kept = entries.size() - added;
    if (kept < m_rows.size()) {
        beginRemoveRows({}, static_cast<int>(kept), rowCount() - 1);
        m_rows.erase(std::next(m_rows.begin(), static_cast<std::ptrdiff_t>(kept)), m_rows.end());
        endRemoveRows();
    }
    if (added > 0) {
        beginInsertRows({}, 0, static_cast<int>(added) - 1);
        m_rows.insert(m_rows.begin(), entries.begin(), firstKept());
        endInsertRows();
    }
}
