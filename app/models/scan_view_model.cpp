#include "app/models/scan_view_model.h"

#include "app/execution/qt_executor.h"
#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/health_text.h"
#include "core/removal/deletion.h"
#include "core/scan/scanner.h"
#include "core/storage/storage_breakdown.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"

#include <algorithm>
#include <iterator>
#include <unordered_set>

namespace {

/// Returns the ids of the items that are safe by default.
std::set<std::string> safeIds(const core::ScanResult& result) {
    std::set<std::string> ids;
    for (const core::ScanItem& item : result.items)
        if (item.safeByDefault)
            ids.insert(item.id);
    return ids;
}

/// Returns the paths in an order that is safe to delete in: the content of a folder before the folder, and
/// entries of the Trash, which are removed permanently, before paths that are moved there. Otherwise a file
/// just moved to the Trash could be removed permanently, if it got the name of an entry that no longer
/// existed.
std::vector<std::string> inDeletionOrder(const std::set<std::string>& ids, const platform::Disk& disk) {
    std::vector<std::string> paths(ids.begin(), ids.end());
    std::stable_sort(paths.begin(), paths.end(),
                     [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
    std::stable_partition(paths.begin(), paths.end(),
                          [trash = platform::trashFolder(disk)](const std::string& path) {
                              return platform::isBelow(path, trash);
                          });
    return paths;
}

template <class Predicate>
core::ScanResult without(const core::ScanResult& result, Predicate isRemoved) {
    std::vector<core::ScanItem> items;
    std::remove_copy_if(result.items.begin(), result.items.end(), std::back_inserter(items), isRemoved);
    return core::ScanResult(std::move(items));
}

} // namespace

ScanViewModel::ScanViewModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                             QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_items(this),
      m_storageEntries(this) {
    connect(&m_items, &ScanItemsModel::checkedChanged, this, &ScanViewModel::selectionChanged);
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &ScanViewModel::healthChanged);
}

std::int64_t ScanViewModel::selectedBytes() const {
    return m_items.checkedBytes();
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
    m_showStorageBreakdown = show;
    Q_EMIT showStorageBreakdownChanged();
}

void ScanViewModel::runScan() {
    setIsScanning(true);
    setResult(std::nullopt);
    setTrashReport(std::nullopt);

    // Read before the scan, published together with its result.
    const core::HealthScore health = core::LumvaleScanner::healthScore(m_disk);
    runInBackground(
        m_executor, this, [disk = m_disk] { return core::LumvaleScanner::scan(disk); },
        [health](ScanViewModel& model, core::ScanResult result) {
            std::set<std::string> safe = safeIds(result);
            model.setResult(std::move(result));
            model.setHealth(health);
            model.setChecked(std::move(safe));
            model.setIsScanning(false);
        });
}

void ScanViewModel::loadStorageBreakdown() {
    m_isLoadingStorageBreakdown = true;
    Q_EMIT storageBreakdownChanged();
    setShowStorageBreakdown(true);
    runInBackground(
        m_executor, this, [disk = m_disk] { return core::LumvaleScanner::storageBreakdown(disk); },
        [](ScanViewModel& model, std::vector<core::StorageEntry> entries) {
            model.m_storageEntries.setEntries(std::move(entries));
            model.m_isLoadingStorageBreakdown = false;
            Q_EMIT model.storageBreakdownChanged();
        });
}

void ScanViewModel::confirmDelete() {
    if (checked().empty())
        return;
    const core::DeletionOutcome outcome =
        core::LumvaleScanner::deletePaths(inDeletionOrder(checked(), m_disk), m_disk);
    m_lastDeletedCount = static_cast<int>(outcome.succeeded.size());
    Q_EMIT lastDeletedCountChanged();

    if (m_result) {
        const std::unordered_set<std::string> deleted(outcome.succeeded.begin(), outcome.succeeded.end());
        const auto isDeleted = [&](const core::ScanItem& item) {
            return deleted.contains(item.path);
        };
        std::vector<HistoryStore::Deletion> deletions;
        for (const core::ScanItem& item : m_result->items)
            if (isDeleted(item))
                deletions.push_back({item.name, item.sizeBytes});
        m_history.record(deletions);
        setResult(without(*m_result, isDeleted));
    }
    // Items that could not be deleted stay in the list, unchecked.
    setChecked({});
    setHealth(core::LumvaleScanner::healthScore(m_disk));
}

void ScanViewModel::confirmEmptyTrash() {
    const core::TrashReport report = core::LumvaleScanner::emptyTrash(m_disk);
    setTrashReport(report);
    if (report.succeeded >= 1)
        m_history.record(localizedCategoryName(core::ScanCategory::trash).toStdString(), report.bytesFreed);

    if (m_result) {
        const auto isTrash = [](const core::ScanItem& item) {
            return item.category == core::ScanCategory::trash;
        };
        std::set<std::string> stillChecked = checked();
        for (const core::ScanItem& item : m_result->items)
            if (isTrash(item))
                stillChecked.erase(item.id);
        setResult(without(*m_result, isTrash));
        setChecked(std::move(stillChecked));
    }
    setHealth(core::LumvaleScanner::healthScore(m_disk));
}

int ScanViewModel::checkedCount() const {
    return static_cast<int>(checked().size());
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

void ScanViewModel::setIsScanning(bool isScanning) {
    m_isScanning = isScanning;
    Q_EMIT isScanningChanged();
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
