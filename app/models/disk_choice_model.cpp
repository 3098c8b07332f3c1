#include "app/models/disk_choice_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "platform/files/path.h"

#include <QFile>

#include <utility>

using namespace Qt::StringLiterals;

DiskChoiceModel::DiskChoiceModel(std::vector<platform::MacDisk> disks,
                                 const std::optional<std::string>& sample, QObject* parent)
    : QAbstractListModel(parent) {
    for (const platform::MacDisk& disk : disks)
        append(disk);
    if (sample)
        if (auto homes = platform::macHomes(*sample))
            append({*sample, std::move(*homes)}, true);
}

int DiskChoiceModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant DiskChoiceModel::data(const QModelIndex& index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[static_cast<std::size_t>(index.row())];
    switch (role) {
    case NameRole:
        return display::name(platform::lastComponent(row.home));
    case PlaceRole:
        return row.isSample ? ::tr(u"disk_sample"_s) : display::text(row.hostRoot);
    default:
        return {};
    }
}

QHash<int, QByteArray> DiskChoiceModel::roleNames() const {
    return {{NameRole, "name"}, {PlaceRole, "place"}};
}

void DiskChoiceModel::choose(int row) {
    if (row < 0 || row >= rowCount())
        return;
    const Row& chosenRow = m_rows[static_cast<std::size_t>(row)];
    const auto disk = platform::openMacDisk(chosenRow.hostRoot, chosenRow.home);
    if (!disk) {
        setProblem(
            ::tr(u"disk_failed"_s).arg(display::text(platform::joined(chosenRow.hostRoot, chosenRow.home))));
        return;
    }
    setProblem({});
    Q_EMIT chosen(*disk);
}

void DiskChoiceModel::chooseFolder(const QUrl& folder) {
    const std::string root = QFile::encodeName(folder.toLocalFile()).toStdString();
    auto homes = platform::macHomes(root);
    if (!homes) {
        setProblem(::tr(u"disk_not_mac"_s).arg(display::text(root)));
        return;
    }
    beginResetModel();
    m_rows.clear();
    append({root, std::move(*homes)});
    endResetModel();
    setProblem({});
    if (rowCount() == 1)
        choose(0);
}

void DiskChoiceModel::append(const platform::MacDisk& disk, bool isSample) {
    for (const std::string& home : disk.homes)
        m_rows.push_back({disk.hostRoot, home, isSample});
}

void DiskChoiceModel::setProblem(const QString& problem) {
    m_problem = problem;
    Q_EMIT problemChanged();
}
