#pragma once

#include "app/execution/background_task.h"
#include "app/history/history_store.h"
#include "app/models/listed_result.h"
#include "app/models/put_back_model.h"
#include "app/models/scan_items_model.h"
#include "app/models/storage_entries_model.h"
#include "core/health/health_score.h"
#include "core/removal/deletion.h"
#include "core/removal/trash.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"

#include <QObject>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The view model of the cleanup screen. Interface thread only. Scans and removals run in the background; a
/// removal is recorded in the history even if the model has been destroyed. Change signals are emitted after
/// the new value is readable.
class ScanViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(BackgroundTask* scanTask READ scanTask CONSTANT)
    Q_PROPERTY(BackgroundTask* removalTask READ removalTask CONSTANT)
    Q_PROPERTY(BackgroundTask* storageTask READ storageTask CONSTANT)
    Q_PROPERTY(PutBackModel* putBack READ putBackModel CONSTANT)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(bool wasScanStopped READ wasScanStopped NOTIFY isScanningChanged)
    Q_PROPERTY(bool hasResult READ hasResult NOTIFY resultChanged)
    Q_PROPERTY(ScanItemsModel* items READ items CONSTANT)
    Q_PROPERTY(int checkedCount READ checkedCount NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedSize READ selectedSize NOTIFY selectionChanged)
    Q_PROPERTY(bool hasHealth READ hasHealth NOTIFY healthChanged)
    Q_PROPERTY(int healthScore READ healthScore NOTIFY healthChanged)
    Q_PROPERTY(QString healthKey READ healthKey NOTIFY healthChanged)
    Q_PROPERTY(QString freeSpaceText READ freeSpaceText NOTIFY healthChanged)
    Q_PROPERTY(bool showDeleteConfirm READ showDeleteConfirm WRITE setShowDeleteConfirm NOTIFY
                   showDeleteConfirmChanged)
    Q_PROPERTY(bool showEmptyTrashConfirm READ showEmptyTrashConfirm WRITE setShowEmptyTrashConfirm NOTIFY
                   showEmptyTrashConfirmChanged)
    Q_PROPERTY(QString deleteMessage READ deleteMessage NOTIFY showDeleteConfirmChanged)
    Q_PROPERTY(bool deletesOnlyForGood READ deletesOnlyForGood NOTIFY showDeleteConfirmChanged)
    Q_PROPERTY(QString deletedText READ deletedText NOTIFY lastDeletedCountChanged)
    Q_PROPERTY(QString unreadText READ unreadText NOTIFY resultChanged)
    Q_PROPERTY(QString stayedText READ stayedText NOTIFY lastDeletedCountChanged)
    Q_PROPERTY(int trashEmptiedCount READ trashEmptiedCount NOTIFY trashReportChanged)
    Q_PROPERTY(QString trashEmptiedSize READ trashEmptiedSize NOTIFY trashReportChanged)
    Q_PROPERTY(int trashFailedCount READ trashFailedCount NOTIFY trashReportChanged)
    Q_PROPERTY(bool trashCouldNotAccess READ lastTrashCouldNotAccess NOTIFY trashReportChanged)
    Q_PROPERTY(QString trashWarning READ trashWarning NOTIFY trashReportChanged)
    Q_PROPERTY(QString trashNote READ trashNote NOTIFY trashReportChanged)
    Q_PROPERTY(QStringList trashFailedNames READ trashFailedNames NOTIFY trashReportChanged)
    Q_PROPERTY(QStringList trashFailedReasonKeys READ trashFailedReasonKeys NOTIFY trashReportChanged)
    Q_PROPERTY(StorageEntriesModel* storageEntries READ storageEntries CONSTANT)
    Q_PROPERTY(
        bool isLoadingStorageBreakdown READ isLoadingStorageBreakdown NOTIFY isLoadingStorageBreakdownChanged)
    Q_PROPERTY(bool showStorageBreakdown READ showStorageBreakdown WRITE setShowStorageBreakdown NOTIFY
                   showStorageBreakdownChanged)

public:
    /// Does not access the disk.
    ScanViewModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                  QObject* parent = nullptr);

    bool isScanning() const { return m_scan.isRunning(); }
    /// Returns the result of the last scan without what was removed since; null before and during a scan.
    const core::ScanResult* result() const { return m_result ? &m_result->result : nullptr; }
    const std::optional<core::HealthScore>& health() const { return m_health; }
    std::set<std::string> checked() const { return m_items.checked(); }
    std::int64_t selectedBytes() const { return m_result ? m_items.checkedItems().bytes() : 0; }
    bool showDeleteConfirm() const { return m_showDeleteConfirm; }
    bool showEmptyTrashConfirm() const { return m_showEmptyTrashConfirm; }
    std::optional<int> lastDeletedCount() const;
    std::optional<int> lastTrashEmptiedCount() const;
    std::optional<std::int64_t> lastTrashEmptiedBytes() const;
    std::optional<int> lastTrashEmptiedFailed() const;
    bool lastTrashCouldNotAccess() const { return m_trashReport && m_trashReport->couldNotAccess; }
    std::vector<core::TrashFailure> lastTrashFailedDetails() const;
    const std::vector<core::StorageEntry>& storageBreakdown() const { return m_storageEntries.entries(); }
    bool isLoadingStorageBreakdown() const { return m_storage.isRunning(); }
    bool showStorageBreakdown() const { return m_showStorageBreakdown; }

    void setChecked(const std::set<std::string>& ids) { m_items.setChecked(ids); }
    void setShowDeleteConfirm(bool show);
    void setShowEmptyTrashConfirm(bool show);
    void setShowStorageBreakdown(bool show);

    Q_INVOKABLE void runScan();  ///< does nothing during a removal
    Q_INVOKABLE void stopScan(); ///< leaves no result
    Q_INVOKABLE void loadStorageBreakdown();
    Q_INVOKABLE void requestDelete() { setShowDeleteConfirm(true); }
    /// Starts deleting the checked items. At the end the deleted ones are recorded in the history and leave
    /// the result. Does nothing during a removal.
    Q_INVOKABLE void confirmDelete();
    Q_INVOKABLE void requestEmptyTrash() { setShowEmptyTrashConfirm(true); }
    /// Starts emptying the Trash. At the end its items leave the result. Does nothing during a removal.
    Q_INVOKABLE void confirmEmptyTrash();

    // The state above as properties for QML. Absent numbers are -1, absent texts are empty.
    BackgroundTask* scanTask() { return &m_scan; }
    BackgroundTask* removalTask() { return &m_removal; }
    BackgroundTask* storageTask() { return &m_storage; }
    PutBackModel* putBackModel() { return &m_putBack; } ///< of the items that the last deletion moved
    bool wasScanStopped() const { return m_wasScanStopped; }
    bool hasResult() const { return m_result != nullptr; }
    ScanItemsModel* items() { return &m_items; }
    int checkedCount() const;
    QString selectedSize() const;
    bool hasHealth() const { return m_health.has_value(); }
    int healthScore() const;
    QString healthKey() const; ///< translation key of the health band
    QString freeSpaceText() const;
    QString deleteMessage() const;   ///< the number of checked items to move and to remove; empty if none is
                                     ///< in the Trash
    bool deletesOnlyForGood() const; ///< all checked items are in the Trash
    QString deletedText() const;     ///< what the last deletion moved and removed
    QString stayedText() const;      ///< what it left and why, until the next scan or removal
    int trashEmptiedCount() const { return lastTrashEmptiedCount().value_or(-1); }
    QString trashEmptiedSize() const;
    int trashFailedCount() const { return lastTrashEmptiedFailed().value_or(-1); }
    QString unreadText() const;   ///< how many folders the scan could not read for lack of file descriptors
    QString trashNote() const;    ///< the Trash was empty, or emptying it was stopped
    QString trashWarning() const; ///< the Trash could not be listed or emptied, and what can be done
    QStringList trashFailedNames() const;
    QStringList trashFailedReasonKeys() const;
    StorageEntriesModel* storageEntries() { return &m_storageEntries; }

Q_SIGNALS:
    void isScanningChanged();
    void resultChanged();
    void selectionChanged();
    void healthChanged();
    void showDeleteConfirmChanged();
    void showEmptyTrashConfirmChanged();
    void lastDeletedCountChanged();
    void trashReportChanged();
    void storageBreakdownChanged();
    void isLoadingStorageBreakdownChanged();
    void showStorageBreakdownChanged();

private:
    /// A deletion and what the history records of it.
    struct Deletion;
    using ResultChange = std::function<ChangedResult(const ListedResult&, const CheckedItems&)>;

    void endOffers();
    void scan();
    int checkedInTrash() const;
    void setHealth(const core::HealthScore& health);
    void takeDeletion(std::shared_ptr<const Deletion> deletion);
    void takePutBack(const core::PutBackOutcome& outcome);
    void setTrashReport(std::shared_ptr<const core::TrashReport> report);
    void changeResult(ResultChange change, std::function<void()> publish);
    void setResult(ChangedResult changed);

    platform::Disk m_disk;
    HistoryStore& m_history;
    platform::Executor m_executor;
    ScanItemsModel m_items;
    BackgroundTask m_scan;
    BackgroundTask m_removal;
    BackgroundTask m_storage;
    PutBackModel m_putBack;
    bool m_wasScanStopped = false;
    SharedResult m_result;            ///< null before and during a scan
    std::int64_t m_unreadFolders = 0; ///< of the last scan
    std::optional<core::HealthScore> m_health;
    bool m_showDeleteConfirm = false;
    bool m_showEmptyTrashConfirm = false;
    std::shared_ptr<const Deletion> m_deletion;             ///< the last one
    SharedResult m_resultBeforeDeletion;                    ///< while its items can be put back
    bool m_tellsStayed = false;                             ///< until the next scan or removal
    std::shared_ptr<const core::TrashReport> m_trashReport; ///< reset by runScan()
    StorageEntriesModel m_storageEntries;
    bool m_showStorageBreakdown = false;
};
