#include "app/models/scan_view_model.h"

#include "app/execution/qt_executor.h"
#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/health_text.h"
#include "app/text/outcome_text.h"
#include "core/removal/deletion_order.h"
#include "core/scan/scanner.h"
#include "core/storage/storage_breakdown.h"
#include "platform/removal/trash.h"

#include <QPointer>

#include <utility>

using namespace Qt::StringLiterals;

struct ScanViewModel::Deletion {
    core::DeletionOutcome outcome;
    std::size_t removedCount = 0;   ///< of the deleted paths, those that were removed permanently
    std::vector<DeletedItem> items; ///< deleted ones
};

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
    m_items.setItems(CheckedItems(
        std::make_shared<const ScanItemList>(std::vector<core::ScanItem>(), platform::trashFolder(m_disk))));
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
    return m_deletion ? std::optional(static_cast<int>(m_deletion->outcome.succeeded.size())) : std::nullopt;
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
    if (m_removal.isRunning())
        return;
    endOffers();
    scan();
    discard(m_executor, std::exchange(m_result, nullptr));
    m_items.hideRows();
    Q_EMIT resultChanged();
    Q_EMIT selectionChanged();
    setTrashReport(nullptr);
}

/// Withdraws Put Back and the sentences about entries that may change from now on.
void ScanViewModel::endOffers() {
    m_putBack.withdraw();
    discard(m_executor, std::exchange(m_resultBeforeDeletion, nullptr));
    m_tellsStayed = false;
    Q_EMIT lastDeletedCountChanged();
}

void ScanViewModel::scan() {
    m_wasScanStopped = false;
    // Read before the scan, published together with its result.
    const core::HealthScore health = core::LumvaleScanner::healthScore(m_disk);
    m_scan.run(
        m_executor,
        [disk = m_disk](platform::Progress& progress) {
            const auto result =
                std::make_shared<const ListedResult>(core::LumvaleScanner::scan(disk, &progress), disk);
            return ChangedResult{result, CheckedItems::safeByDefault(result->list), std::nullopt};
        },
        [this, health](ChangedResult scanned) {
            m_unreadFolders = scanned.result->result.unreadFolders;
            setResult(std::move(scanned));
            setHealth(health);
        });
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
    if (checkedCount() == 0 || m_removal.isRunning())
        return;
    endOffers();
    auto recorded = std::make_shared<std::vector<RecordedDeletion>>();
    m_removal.runRemoval(
        m_executor,
        [checked = m_items.checkedItems(), result = m_result, disk = m_disk](platform::Progress& progress) {
            auto deletion = std::make_shared<Deletion>();
            deletion->outcome = core::LumvaleScanner::deletePaths(
                core::LumvaleScanner::inDeletionOrder(checked.ids(), disk), disk, &progress);
            for (const std::string& path : deletion->outcome.succeeded)
                deletion->removedCount += checked.list()->isInTrash(path);
            if (result)
                deletion->items = deletedItems(result->result.items, deletion->outcome);
            return deletion;
        },
        [history = QPointer(&m_history), recorded](const std::shared_ptr<Deletion>& deletion) {
            if (history)
                *recorded = recordDeletion(*history, deletion->items);
        },
        [this, recorded](const std::shared_ptr<Deletion>& deletion) {
            m_putBack.offer(std::move(deletion->outcome.moved), std::move(*recorded));
            takeDeletion(deletion);
        });
}

void ScanViewModel::takeDeletion(std::shared_ptr<const Deletion> deletion) {
    changeResult(
        [deletion, disk = m_disk](const ListedResult& before, const CheckedItems& /*checked*/) {
            return afterDeletion(before, deletion->outcome, disk);
        },
        [this, deletion] {
            discard(m_executor, std::exchange(m_deletion, deletion));
            m_tellsStayed = true;
            if (m_putBack.isOffered())
                m_resultBeforeDeletion = m_result;
            Q_EMIT lastDeletedCountChanged();
            if (!m_result)
                setChecked({});
        });
}

void ScanViewModel::takePutBack(const core::PutBackOutcome& outcome) {
    changeResult(
        [earlier = m_resultBeforeDeletion, outcome = std::make_shared<const core::PutBackOutcome>(outcome),
         disk = m_disk](const ListedResult& before, const CheckedItems& checked) {
            return afterPutBack(before, checked, earlier ? *earlier : before, *outcome, disk);
        },
        [this] {
            if (!m_putBack.isOffered())
                discard(m_executor, std::exchange(m_resultBeforeDeletion, nullptr));
            discard(m_executor, std::exchange(m_deletion, nullptr));
            Q_EMIT lastDeletedCountChanged();
        });
}

void ScanViewModel::confirmEmptyTrash() {
    if (m_removal.isRunning())
        return;
    endOffers();
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
        [this](core::TrashReport removed) {
            const auto report = std::make_shared<const core::TrashReport>(std::move(removed));
            changeResult(
                [report, disk = m_disk](const ListedResult& before, const CheckedItems& checked) {
                    return afterEmptyingTrash(before, checked, *report, disk);
                },
                [this, report] { setTrashReport(report); });
        });
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
    return checkedCount() > 0 && checkedInTrash() == checkedCount();
}

int ScanViewModel::checkedInTrash() const {
    return static_cast<int>(m_items.checkedItems().countInTrash());
}

QString ScanViewModel::deletedText() const {
    if (!m_deletion)
        return {};
    const std::size_t removed = m_deletion->removedCount;
    return outcome::deleted(m_deletion->outcome.succeeded.size() - removed, removed);
}

QString ScanViewModel::stayedText() const {
    return m_deletion && m_tellsStayed ? outcome::stayed(m_deletion->outcome) : QString();
}

QString ScanViewModel::unreadText() const {
    return m_unreadFolders > 0 ? outcome::counted(u"folders_unread"_s, m_unreadFolders) : QString();
}

QString ScanViewModel::trashNote() const {
    return m_trashReport ? outcome::trashNote(*m_trashReport) : QString();
}

QString ScanViewModel::trashWarning() const {
    return m_trashReport ? outcome::trashWarning(*m_trashReport, m_disk.isReadOnly()) : QString();
}

int ScanViewModel::checkedCount() const {
    return static_cast<int>(m_items.checkedItems().count());
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
        keys.append(m_disk.isReadOnly() ? u"err_read_only"_s : display::text(failure.reasonKey));
    return keys;
}

/// Changes the result in the background, then calls `publish` and shows the new one. Without a result, only
/// calls `publish`; a running scan, which may have found what was removed, starts again. Continues the
/// removal that has just ended.
void ScanViewModel::changeResult(ResultChange change, std::function<void()> publish) {
    if (!m_result) {
        publish();
        setHealth(core::LumvaleScanner::healthScore(m_disk));
        if (isScanning())
            scan();
        return;
    }
    m_removal.runRemoval(
        m_executor,
        [change, before = m_result, checked = m_items.checkedItems()](platform::Progress& /*progress*/) {
            return change(*before, checked);
        },
        [](const ChangedResult& /*changed*/) {},
        [this, change, publish, before = m_result](ChangedResult changed) mutable {
            if (before != m_result) { // a scan has ended since
                changeResult(change, publish);
            } else {
                publish();
                setResult(std::move(changed));
                setHealth(core::LumvaleScanner::healthScore(m_disk));
            }
            discard(m_executor, std::move(before));
        });
}

void ScanViewModel::setResult(ChangedResult changed) {
    CheckedItems::List list = m_items.checkedItems().list();
    SharedResult before = std::exchange(m_result, std::move(changed.result));
    if (changed.removed)
        m_items.setRemaining(std::move(changed.checked), *changed.removed);
    else
        m_items.setItems(std::move(changed.checked));
    Q_EMIT resultChanged();
    discard(m_executor, std::pair(std::move(before), std::move(list)));
}

void ScanViewModel::setHealth(const core::HealthScore& health) {
    m_health = health;
    Q_EMIT healthChanged();
}

void ScanViewModel::setTrashReport(std::shared_ptr<const core::TrashReport> report) {
    discard(m_executor, std::exchange(m_trashReport, std::move(report)));
    Q_EMIT trashReportChanged();
}
