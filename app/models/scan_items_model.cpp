#include "app/models/scan_items_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "platform/base/bytes.h"

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

ScanItemsModel::ScanItemsModel(QObject* parent) : QAbstractListModel(parent) {
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &ScanItemsModel::describeSections);
}

int ScanItemsModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() || m_sections.empty() ? 0 : m_sections.back().row + m_sections.back().rowCount();
}

QVariant ScanItemsModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Section& section = sectionAt(index.row());
    const std::size_t place = indexAt(index.row());
    const core::ScanItem& item = items()[place];
    switch (role) {
    case CategoryRole:
        return section.name;
    case NameRole:
        return display::text(item.name);
    case PathRole:
        return section.isFolded ? QVariant() : QByteArray::fromStdString(item.path);
    case ExplanationRole:
        return display::text(item.explanation);
    case SizeRole:
        return display::size(item.sizeBytes);
    case DateRole:
        return ItemDateFormat::string(item.modifiedDate).value_or(QString());
    case CheckedRole:
        return m_isChecked[place] == true;
    case FoldedRole:
        return section.isFolded;
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

void ScanItemsModel::setItems(std::vector<core::ScanItem> items) {
    const std::set<std::string> ids = checked();
    beginResetModel();
    replaceList(std::make_shared<const ScanItemList>(std::move(items)));
    assignChecked(ids);
    endResetModel();
    describeSections();
}

void ScanItemsModel::setList(std::shared_ptr<const ScanItemList> list) {
    beginResetModel();
    replaceList(std::move(list));
    m_otherChecked.clear();
    m_isChecked.assign(items().size(), false);
    for (std::size_t item = 0; item < m_isChecked.size(); ++item)
        if (m_list->isSafe(item))
            check(item, true);
    countChecked();
    endResetModel();
    Q_EMIT checkedChanged();
    describeSections();
}

std::set<std::string> ScanItemsModel::checked() const {
    std::set<std::string> ids = m_otherChecked;
    for (std::size_t item = 0; item < m_isChecked.size(); ++item)
        if (m_isChecked[item])
            ids.insert(items()[item].id);
    return ids;
}

void ScanItemsModel::setChecked(const std::set<std::string>& ids) {
    assignChecked(ids);
    announceChecked();
}

void ScanItemsModel::toggle(int row) {
    if (row < 0 || row >= rowCount())
        return;
    const Section& section = sectionAt(row);
    if (section.isFolded) {
        toggleSection(section.name);
        return;
    }
    const std::size_t item = section.begin + static_cast<std::size_t>(row - section.row);
    check(item, !m_isChecked[item]);
    countChecked();
    announceChecked();
}

void ScanItemsModel::toggleSection(const QString& name) {
    const Section* section = find(name);
    if (!section || !section->hasTick())
        return;
    const bool isChecked = section->checkedSafeCount < section->safeCount;
    for (std::size_t item = section->begin; item < section->end; ++item)
        if (m_list->isSafe(item))
            check(item, isChecked);
    countChecked();
    announceChecked();
}

void ScanItemsModel::setFolded(const QString& name, bool isFolded) {
    Section* section = find(name);
    if (!section || section->isFolded == isFolded)
        return;
    const int firstHidden = section->row + 1;
    const int lastHidden = section->row + static_cast<int>(section->end - section->begin) - 1;
    const bool changesRows = firstHidden <= lastHidden;
    if (changesRows && isFolded)
        beginRemoveRows({}, firstHidden, lastHidden);
    else if (changesRows)
        beginInsertRows({}, firstHidden, lastHidden);
    section->isFolded = isFolded;
    if (isFolded)
        m_folded.insert(section->category);
    else
        m_folded.erase(section->category);
    placeSections();
    if (changesRows && isFolded)
        endRemoveRows();
    else if (changesRows)
        endInsertRows();
    Q_EMIT dataChanged(index(section->row), index(section->row), {FoldedRole});
    describeSections();
}

int ScanItemsModel::firstRow(const QString& name) const {
    const auto section = std::ranges::find(m_sections, name, &Section::name);
    return section == m_sections.end() ? -1 : section->row;
}

bool ScanItemsModel::Section::hasTick() const {
    using enum core::ScanCategory;
    return safeCount > 0 && (category == cache || category == logs || category == trash);
}

const ScanItemsModel::Section& ScanItemsModel::sectionAt(int row) const {
    const auto isAfter = [row](const Section& section) {
        return section.row > row;
    };
    return *std::prev(std::ranges::find_if(m_sections, isAfter));
}

std::size_t ScanItemsModel::indexAt(int row) const {
    const Section& section = sectionAt(row);
    return section.begin + static_cast<std::size_t>(row - section.row);
}

const core::ScanItem& ScanItemsModel::itemAt(int row) const {
    return items()[indexAt(row)];
}

ScanItemsModel::Section* ScanItemsModel::find(const QString& name) {
    const auto section = std::ranges::find(m_sections, name, &Section::name);
    return section == m_sections.end() ? nullptr : &*section;
}

void ScanItemsModel::replaceList(std::shared_ptr<const ScanItemList> list) {
    m_list = std::move(list);
    m_sections.clear();
    for (const ScanItemList::Section& section : m_list->sections())
        m_sections.push_back({section, display::text(translationKey(section.category)), 0,
                              m_folded.contains(section.category)});
    placeSections();
}

void ScanItemsModel::placeSections() {
    int row = 0;
    for (Section& section : m_sections) {
        section.row = row;
        row += section.rowCount();
    }
}

/// Sets all items with the id of this one.
void ScanItemsModel::check(std::size_t item, bool isChecked) {
    for (std::size_t same = item; m_isChecked[same] != isChecked; same = m_list->next(same))
        m_isChecked[same] = isChecked;
}

void ScanItemsModel::assignChecked(const std::set<std::string>& ids) {
    m_otherChecked = ids;
    m_isChecked.assign(items().size(), false);
    for (std::size_t item = 0; item < items().size(); ++item) {
        m_isChecked[item] = ids.contains(items()[item].id);
        m_otherChecked.erase(items()[item].id);
    }
    countChecked();
}

/// Counts in one pass, which takes less time than a frame, rather than by differences.
void ScanItemsModel::countChecked() {
    m_checkedCount = m_otherChecked.size();
    m_checkedBytes = 0;
    for (Section& section : m_sections) {
        section.checkedSafeCount = 0;
        for (std::size_t item = section.begin; item < section.end; ++item)
            if (m_isChecked[item]) {
                m_checkedCount += m_list->isLastOfId(item);
                m_checkedBytes = platform::addBytes(m_checkedBytes, m_list->sizeBytes(item));
                section.checkedSafeCount += m_list->isSafe(item);
            }
    }
}

void ScanItemsModel::announceChecked() {
    if (rowCount() > 0)
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {CheckedRole});
    Q_EMIT checkedChanged();
    describeSections();
}

void ScanItemsModel::describeSections() {
    m_sectionFacts.clear();
    for (const Section& section : m_sections) {
        const auto count = static_cast<std::int64_t>(section.end - section.begin);
        const Qt::CheckState state = section.checkedSafeCount == 0                   ? Qt::Unchecked
                                     : section.checkedSafeCount == section.safeCount ? Qt::Checked
                                                                                     : Qt::PartiallyChecked;
        m_sectionFacts[section.name] = QVariantMap{
            {u"summary"_s,
             ::tr(u"progress_so_far"_s, count).arg(display::count(count), display::size(section.bytes))},
            {u"tick"_s, section.hasTick() ? state : -1},
            {u"isFolded"_s, section.isFolded}};
    }
    Q_EMIT sectionsChanged();
}
