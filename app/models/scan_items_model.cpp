#include "app/models/scan_items_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

ScanItemsModel::ScanItemsModel(QObject* parent) : QAbstractListModel(parent) {
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &ScanItemsModel::describeSections);
}

int ScanItemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || m_rows.empty() ? 0 : m_rows.back().first + m_rows.back().rowCount();
}

QVariant ScanItemsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Rows& rows = rowsAt(index.row());
    const std::size_t place = indexAt(index.row());
    const core::ScanItem& item = items()[place];
    switch (role) {
    case CategoryRole:
        return rows.name;
    case NameRole:
        return rows.isFolded ? QString() : display::text(item.name);
    case PathRole:
        return rows.isFolded ? QVariant() : QByteArray::fromStdString(item.path);
    case ExplanationRole:
        return display::text(item.explanation);
    case SizeRole:
        return display::size(item.sizeBytes);
    case DateRole:
        return ItemDateFormat::string(item.modifiedDate).value_or(QString());
    case CheckedRole:
        return m_checked.isChecked(place);
    case FoldedRole:
        return rows.isFolded;
    default:
        return {};
    }
}

QHash<int, QByteArray> ScanItemsModel::roleNames() const {
    return {
        {CategoryRole, "category"},       {NameRole, "name"},       {PathRole, "path"},
        {ExplanationRole, "explanation"}, {SizeRole, "size"},       {DateRole, "date"},
        {CheckedRole, "checked"},         {FoldedRole, "isFolded"},
    };
}

void ScanItemsModel::setItems(CheckedItems items) {
    beginResetModel();
    replace(std::move(items));
    endResetModel();
    Q_EMIT checkedChanged();
    describeSections();
}

void ScanItemsModel::setItems(std::vector<core::ScanItem> items) {
    setItems(CheckedItems(std::make_shared<const ScanItemList>(std::move(items)), checked()));
}

void ScanItemsModel::setRemaining(CheckedItems remaining, const std::vector<ScanItemList::Range>& removed) {
    // Views handle every range separately.
    constexpr std::size_t maxRemovals = 200;
    if (removed.size() > maxRemovals) {
        setItems(std::move(remaining));
        return;
    }
    std::for_each(removed.rbegin(), removed.rend(),
                  [this](const ScanItemList::Range& items) { remove(items); });
    replace(std::move(remaining));
    announceRows({});
}

void ScanItemsModel::hideRows() {
    beginResetModel();
    m_rows.clear();
    endResetModel();
    describeSections();
}

void ScanItemsModel::setChecked(const std::set<std::string>& ids) {
    m_checked = CheckedItems(m_checked.list(), ids);
    announceRows({CheckedRole});
}

void ScanItemsModel::toggle(int row) {
    if (row < 0 || row >= rowCount())
        return;
    if (const Rows& rows = rowsAt(row); rows.isFolded) {
        toggleSection(rows.name);
        return;
    }
    const std::size_t item = indexAt(row);
    m_checked.check(item, !m_checked.isChecked(item));
    announceRows({CheckedRole});
}

void ScanItemsModel::toggleSection(const QString& name) {
    const Rows* rows = find(name);
    if (!rows || !hasTick(*rows))
        return;
    const bool isChecked = m_checked.safeCount(rows->section) < sectionOf(*rows).safeCount;
    m_checked.checkSafe(rows->section, isChecked);
    announceRows({CheckedRole});
}

void ScanItemsModel::setFolded(const QString& name, bool isFolded) {
    Rows* rows = find(name);
    if (!rows || rows->isFolded == isFolded)
        return;
    const int firstHidden = rows->first + 1;
    const int lastHidden = rows->first + static_cast<int>(rows->count()) - 1;
    const bool changesRows = firstHidden <= lastHidden;
    if (changesRows && isFolded)
        beginRemoveRows({}, firstHidden, lastHidden);
    else if (changesRows)
        beginInsertRows({}, firstHidden, lastHidden);
    rows->isFolded = isFolded;
    if (isFolded)
        m_folded.insert(sectionOf(*rows).category);
    else
        m_folded.erase(sectionOf(*rows).category);
    placeRows();
    if (changesRows && isFolded)
        endRemoveRows();
    else if (changesRows)
        endInsertRows();
    Q_EMIT dataChanged(index(rows->first), index(rows->first), {NameRole, PathRole, FoldedRole});
    describeSections();
}

int ScanItemsModel::firstRow(const QString& name) const {
    const auto rows = std::ranges::find(m_rows, name, &Rows::name);
    return rows == m_rows.end() ? -1 : rows->first;
}

const ScanItemList::Section& ScanItemsModel::sectionOf(const Rows& rows) const {
    return list().sections()[rows.section];
}

bool ScanItemsModel::hasTick(const Rows& rows) const {
    using enum core::ScanCategory;
    const ScanItemList::Section& section = sectionOf(rows);
    return section.safeCount > 0
           && (section.category == cache || section.category == logs || section.category == trash);
}

const ScanItemsModel::Rows& ScanItemsModel::rowsAt(int row) const {
    const auto isAfter = [row](const Rows& rows) {
        return rows.first > row;
    };
    return *std::prev(std::ranges::find_if(m_rows, isAfter));
}

std::size_t ScanItemsModel::indexAt(int row) const {
    const Rows& rows = rowsAt(row);
    return rows.begin + static_cast<std::size_t>(row - rows.first);
}

const core::ScanItem& ScanItemsModel::itemAt(int row) const {
    return items()[indexAt(row)];
}

ScanItemsModel::Rows* ScanItemsModel::find(const QString& name) {
    const auto rows = std::ranges::find(m_rows, name, &Rows::name);
    return rows == m_rows.end() ? nullptr : &*rows;
}

void ScanItemsModel::replace(CheckedItems items) {
    m_checked = std::move(items);
    m_rows.clear();
    for (std::size_t section = 0; section < list().sections().size(); ++section) {
        const ScanItemList::Section& all = list().sections()[section];
        m_rows.push_back(
            {all, section, display::text(translationKey(all.category)), 0, m_folded.contains(all.category)});
    }
    placeRows();
}

/// Removes the rows of items that are rows of the same section.
void ScanItemsModel::remove(const ScanItemList::Range& items) {
    const auto isAfter = [&items](const Rows& rows) {
        return rows.begin > items.begin;
    };
    const auto rows = std::prev(std::ranges::find_if(m_rows, isAfter));
    if (rows->isFolded && items.count() < rows->count())
        return; // its one row stays
    const int first =
        rows->isFolded ? rows->first : rows->first + static_cast<int>(items.begin - rows->begin);
    const int count = rows->isFolded ? 1 : static_cast<int>(items.count());
    beginRemoveRows({}, first, first + count - 1);
    Rows after = *rows;
    after.begin = items.end;
    rows->end = items.begin;
    if (after.count() > 0)
        m_rows.insert(std::next(rows), std::move(after));
    std::erase_if(m_rows, [](const Rows& each) { return each.count() == 0; });
    placeRows();
    endRemoveRows();
}

void ScanItemsModel::placeRows() {
    int first = 0;
    for (Rows& rows : m_rows) {
        rows.first = first;
        first += rows.rowCount();
    }
}

void ScanItemsModel::announceRows(const QList<int>& roles) {
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), roles);
    Q_EMIT checkedChanged();
    describeSections();
}

void ScanItemsModel::describeSections() {
    m_sectionFacts.clear();
    for (const Rows& rows : m_rows) {
        const ScanItemList::Section& section = sectionOf(rows);
        const auto count = static_cast<std::int64_t>(section.count());
        const std::size_t checkedSafe = m_checked.safeCount(rows.section);
        const Qt::CheckState state = checkedSafe == 0                   ? Qt::Unchecked
                                     : checkedSafe == section.safeCount ? Qt::Checked
                                                                        : Qt::PartiallyChecked;
        m_sectionFacts[rows.name] = QVariantMap{
            {u"summary"_s,
             ::tr(u"progress_so_far"_s, count).arg(display::count(count), display::size(section.bytes))},
            {u"tick"_s, hasTick(rows) ? state : -1},
            {u"isFolded"_s, rows.isFolded}};
    }
    Q_EMIT sectionsChanged();
}
