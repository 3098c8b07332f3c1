#include "app/models/scan_view_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/health_text.h"
#include "app/text/outcome_text.h"
#include "core/removal/deletion_order.h"
#include "core/scan/result_changes.h"
#include "core/scan/scanner.h"
#include "core/storage/storage_breakdown.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// The result of a scan and its list, which takes long to build from many items.
struct ListedResult {
    core::ScanResult result;
    std::shared_ptr<const ScanItemList> list;
};

template <class Paths>
int countInTrash(const Paths& paths, const platform::Disk& disk) {
    return static_cast<int>(std::count_if(paths.begin(), paths.end(),
                                          [trash = platform::trashFolder(disk)](const std::string& path) {
                                              return platform::isBelow(path, trash);
                                          }));
}

} // namespace

ScanViewModel::ScanViewModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                             QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_items(this),
      m_scan(this),
      m_removal(this),
      m_storage(this),
      m_putBack(m_disk, m_history, m_executor, m_removal, this),
      m_storageEntries(this) {
    connect(&m_putBack, &PutBackModel::finished, this, &ScanViewModel::takePutBack);
    connect(&m_items, &ScanItemsModel::checkedChanged, this, &ScanViewModel::selectionChanged);
    connect(&m_scan, &BackgroundTask::runningChanged, this, &ScanViewModel::isScanningChanged);
    connect(&m_storage, &BackgroundTask::runningChanged, this,
            &ScanViewModel::isLoadingStorageBreakdownChanged);
    for (const auto signal : {&ScanViewModel::healthChanged, &ScanViewModel::lastDeletedCountChanged,
                              &ScanViewModel::trashReportChanged})
        connect(&Localizer::shared(), &Localizer::languageChanged, this, signal);
}

std::optional<int> ScanViewModel::lastDeletedCount() const {
    return m_deletion ? std::optional(static_cast<int>(m_deletion->succeeded.size())) : std::nullopt;
}

std::optional<int> ScanViewModel::lastTrashEmptiedCount() const {
    return m_trashReport ? std::optional(m_trashReport->succeeded) : std::nullopt;
}

std::optional<std::int64_t> ScanViewModel::lastTrashEmptiedBytes() const {
    return m_trashReport ? std::optional(m_trashReport->bytesFreed) : std::nullopt;
}

std::optional<int> ScanViewModel::lastTrashEmptiedFailed() const {
    return m_trashReport ? std::optional(m_trashReport->failed) : std::nullopt;
}

std::vector<core::TrashFailure> ScanViewModel::lastTrashFailedDetails() const {
    return m_trashReport ? m_trashReport->failedDetails : std::vector<core::TrashFailure>();
}

void ScanViewModel::setShowDeleteConfirm(bool show) {
    m_showDeleteConfirm = show;
    Q_EMIT showDeleteConfirmChanged();
}

void ScanViewModel::setShowEmptyTrashConfirm(bool show) {
    m_showEmptyTrashConfirm = show;
    Q_EMIT showEmptyTrashConfirmChanged();
}

void ScanViewModel::setShowStorageBreakdown(bool show) {
    if (!show)
        m_storage.stop();
    m_showStorageBreakdown = show;
    Q_EMIT showStorageBreakdownChanged();
}

void ScanViewModel::runScan() {
    m_wasScanStopped = false;
    m_putBack.withdraw();
    // Read before the scan, published together with its result.
    const core::HealthScore health = core::LumvaleScanner::healthScore(m_disk);
    auto before = std::make_shared<ListedResult>(
        ListedResult{m_result ? std::move(*m_result) : core::ScanResult({}), m_items.list()});
    m_scan.run(
        m_executor,
        [disk = m_disk, before = std::move(before)](platform::Progress& progress) mutable {
            before.reset(); // destroying many items takes long, too
            core::ScanResult result = core::LumvaleScanner::scan(disk, &progress);
            auto list = std::make_shared<const ScanItemList>(result.items);
            return ListedResult{std::move(result), std::move(list)};
        },
        [this, health](ListedResult listed) {
            m_unreadFolders = listed.result.unreadFolders;
            m_result = std::move(listed.result);
            m_items.setList(std::move(listed.list));
            Q_EMIT resultChanged();
            setHealth(health);
        });
    setResult(std::nullopt);
    setTrashReport(std::nullopt);
}

void ScanViewModel::stopScan() {
    m_wasScanStopped = isScanning();
    m_scan.stop();
}

void ScanViewModel::loadStorageBreakdown() {
    m_storage.run(
        m_executor,
        [disk = m_disk](platform::Progress& progress) {
            return core::LumvaleScanner::storageBreakdown(disk, &progress);
        },
        [this](std::vector<core::StorageEntry> entries) {
            m_storageEntries.setEntries(std::move(entries));
            Q_EMIT storageBreakdownChanged();
        });
    setShowStorageBreakdown(true);
}

void ScanViewModel::confirmDelete() {
    const std::set<std::string> ids = checked();
    if (ids.empty() || m_removal.isRunning())
        return;
    std::vector<core::ScanItem> items;
    if (m_result)
        std::copy_if(m_result->items.begin(), m_result->items.end(), std::back_inserter(items),
                     [&ids](const core::ScanItem& item) { return ids.contains(item.id); });
    m_putBack.withdraw();
    auto recorded = std::make_shared<std::vector<RecordedDeletion>>();
    m_removal.runRemoval(
        m_executor,
        [paths = core::LumvaleScanner::inDeletionOrder(ids, m_disk),
         disk = m_disk](platform::Progress& progress) {
            return core::LumvaleScanner::deletePaths(paths, disk, &progress);
        },
        [items = std::move(items), history = QPointer(&m_history),
         recorded](const core::DeletionOutcome& outcome) {
            if (history)
                *recorded = recordDeletion(*history, items, outcome);
        },
        [this, recorded](core::DeletionOutcome outcome) {
            m_putBack.offer(outcome.moved, std::move(*recorded));
            takeDeletion(std::move(outcome));
        });
}

void ScanViewModel::takeDeletion(core::DeletionOutcome outcome) {
    m_deletion = std::move(outcome);
    m_resultBeforeDeletion = m_result;
    Q_EMIT lastDeletedCountChanged();
    if (m_result)
        setResult(core::afterDeletion(*m_result, *m_deletion));
    // Items that were not deleted stay in the list, unchecked.
    setChecked({});
    setHealth(core::LumvaleScanner::healthScore(m_disk));
}

void ScanViewModel::takePutBack(const core::PutBackOutcome& outcome) {
    m_deletion.reset();
    Q_EMIT lastDeletedCountChanged();
    if (m_result && m_resultBeforeDeletion) {
        std::set<std::string> ids = checked();
        ids.insert(outcome.succeeded.begin(), outcome.succeeded.end()); // as before the deletion
        setResult(core::afterPutBack(*m_result, *m_resultBeforeDeletion, outcome));
        setChecked(std::move(ids));
    }
    setHealth(core::LumvaleScanner::healthScore(m_disk));
}

void ScanViewModel::confirmEmptyTrash() {
    if (m_removal.isRunning())
        return;
    m_putBack.withdraw();
    m_removal.runRemoval(
        m_executor,
        [disk = m_disk](platform::Progress& progress) {
            return core::LumvaleScanner::emptyTrash(disk, &progress);
        },
        [history = QPointer(&m_history)](const core::TrashReport& report) {
            if (history && (report.succeeded >= 1 || report.partial))
                history->record(localizedCategoryName(core::ScanCategory::trash).toStdString(),
                                report.bytesFreed);
        },
        [this](core::TrashReport report) { takeTrashReport(std::move(report)); });
}

void ScanViewModel::takeTrashReport(core::TrashReport report) {
    setTrashReport(std::move(report));
    if (m_result) {
        std::set<std::string> stillChecked = checked();
        for (const core::ScanItem& item : m_result->items)
            if (item.category == core::ScanCategory::trash)
                stillChecked.erase(item.id);
        setResult(core::afterEmptyingTrash(*m_result, *m_trashReport));
        setChecked(stillChecked);
    }
    setHealth(core::LumvaleScanner::healthScore(m_disk));
}

QString ScanViewModel::deleteMessage() const {
    const int forGood = checkedInTrash();
    if (forGood == 0)
        return {};
    const QString removes = outcome::counted(u"delete_removes"_s, forGood);
    const int moves = checkedCount() - forGood;
    return moves == 0 ? removes : outcome::counted(u"delete_moves"_s, moves) + u'\n' + removes;
}

bool ScanViewModel::deletesOnlyForGood() const {
    return !checked().empty() && checkedInTrash() == checkedCount();
}

int ScanViewModel::checkedInTrash() const {
    return countInTrash(checked(), m_disk);
}

QString ScanViewModel::deletedText() const {
    if (!m_deletion)
        return {};
    const int removed = countInTrash(m_deletion->succeeded, m_disk);
    const int moved = static_cast<int>(m_deletion->succeeded.size()) - removed;
    QStringList texts;
    if (moved > 0)
        texts.append(QString::number(moved) + u' ' + ::tr(u"deleted_confirmation"_s));
    if (removed > 0)
        texts.append(QString::number(removed) + u' ' + ::tr(u"trash_emptied_confirmation"_s));
    return texts.join(u" · "_s);
}

QString ScanViewModel::stayedText() const {
    return m_deletion ? outcome::stayed(*m_deletion) : QString();
}

QString ScanViewModel::unreadText() const {
    return m_unreadFolders > 0 ? outcome::counted(u"folders_unread"_s, m_unreadFolders) : QString();
}

QString ScanViewModel::trashNote() const {
    if (!m_trashReport || m_trashReport->couldNotAccess)
        return {};
    if (!m_trashReport->left.empty())
        return outcome::counted(u"removal_stopped"_s, static_cast<std::int64_t>(m_trashReport->left.size()));
    return m_trashReport->succeeded + m_trashReport->failed == 0 ? ::tr(u"trash_already_empty"_s) : QString();
}

int ScanViewModel::checkedCount() const {
    return static_cast<int>(m_items.checkedCount());
}

QString ScanViewModel::selectedSize() const {
    return display::size(selectedBytes());
}

int ScanViewModel::healthScore() const {
    return m_health ? m_health->score : -1;
}

QString ScanViewModel::healthKey() const {
    return m_health ? display::healthKey(m_health->band()) : QString();
}

QString ScanViewModel::freeSpaceText() const {
    return m_health ? display::freeSpace(*m_health) : QString();
}

QString ScanViewModel::trashEmptiedSize() const {
    return m_trashReport ? display::size(m_trashReport->bytesFreed) : QString();
}

QStringList ScanViewModel::trashFailedNames() const {
    QStringList names;
    for (const core::TrashFailure& failure : lastTrashFailedDetails())
        names.append(display::text(failure.name));
    return names;
}

QStringList ScanViewModel::trashFailedReasonKeys() const {
    QStringList keys;
    for (const core::TrashFailure& failure : lastTrashFailedDetails())
        keys.append(display::text(failure.reasonKey));
    return keys;
}

void ScanViewModel::setResult(std::optional<core::ScanResult> result) {
    m_result = std::move(result);
    m_items.setItems(m_result ? m_result->items : std::vector<core::ScanItem>());
    Q_EMIT resultChanged();
    Q_EMIT selectionChanged();
}

void ScanViewModel::setHealth(const core::HealthScore& health) {
    m_health = health;
    Q_EMIT healthChanged();
}

void ScanViewModel::setTrashReport(std::optional<core::TrashReport> report) {
    m_trashReport = std::move(report);
    Q_EMIT trashReportChanged();
}
