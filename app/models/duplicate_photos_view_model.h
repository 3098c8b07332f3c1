#pragma once

#include "app/execution/background_task.h"
#include "app/history/history_store.h"
#include "app/models/duplicate_groups_model.h"
#include "core/photos/photo_duplicates.h"
#include "platform/base/executor.h"
#include "platform/photos/photo_library.h"

#include <QObject>

#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The view model of the duplicates screen. Interface thread only. The photo library is used in the
/// background; results that arrive after the model is destroyed are dropped, but a deletion is recorded in
/// the history. Change signals are emitted after the new value is readable.
class DuplicatePhotosViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(BackgroundTask* searchTask READ searchTask CONSTANT)
    Q_PROPERTY(BackgroundTask* removalTask READ removalTask CONSTANT)
    Q_PROPERTY(bool isUndecided READ isUndecided NOTIFY authStateChanged)
    Q_PROPERTY(bool isDenied READ isDenied NOTIFY authStateChanged)
    Q_PROPERTY(DuplicateGroupsModel* groups READ groupsModel CONSTANT)
    Q_PROPERTY(int groupCount READ groupCount NOTIFY groupsChanged)
    Q_PROPERTY(QString totalWasted READ totalWasted NOTIFY groupsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool wasScanStopped READ wasScanStopped NOTIFY isLoadingChanged)
    Q_PROPERTY(bool hasScanned READ hasScanned NOTIFY hasScannedChanged)
    Q_PROPERTY(bool hasScanFailed READ hasScanFailed NOTIFY hasScannedChanged)
    Q_PROPERTY(bool isReadOnly READ isReadOnly NOTIFY isReadOnlyChanged)
    Q_PROPERTY(int checkedCount READ checkedCount NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedSize READ selectedSize NOTIFY selectionChanged)
    Q_PROPERTY(bool showDeleteConfirm READ showDeleteConfirm WRITE setShowDeleteConfirm NOTIFY
                   showDeleteConfirmChanged)
    Q_PROPERTY(bool canStopDeletion READ canStopDeletion CONSTANT)
    Q_PROPERTY(bool hasDeletionFailed READ hasDeletionFailed NOTIFY deletionChanged)
    Q_PROPERTY(bool wasDeletionStopped READ wasDeletionStopped NOTIFY deletionChanged)
    Q_PROPERTY(int deletedCount READ deletedCount NOTIFY deletionChanged)

public:
    /// Reads the permission for the photo library; neither requests it nor scans.
    DuplicatePhotosViewModel(platform::PhotoLibrary library, HistoryStore& history,
                             platform::Executor executor, QObject* parent = nullptr);

    core::PhotoAccessState authState() const { return m_authState; }
    const std::vector<core::DuplicatePhotoGroup>& groups() const { return m_groups.groups(); }
    bool isLoading() const { return m_search.isRunning(); }
    bool wasScanStopped() const { return m_wasScanStopped; } ///< whether the last search was stopped
    bool hasScanned() const { return m_hasScanned; }
    bool hasScanFailed() const { return m_hasScanFailed; } ///< whether the last search failed
    bool isReadOnly() const { return m_isReadOnly; }       ///< nothing can be deleted from the library
    const std::set<std::string>& checked() const { return m_groups.checked(); }
    bool showDeleteConfirm() const { return m_showDeleteConfirm; }
    std::optional<int> lastDeletedCount() const { return m_lastDeletedCount; }
    std::int64_t selectedBytes() const { return m_groups.checkedBytes(); }
    std::int64_t totalWastedBytes() const { return m_totalWastedBytes; } ///< saturated

    void setChecked(std::set<std::string> ids) { m_groups.setChecked(std::move(ids)); }
    void setShowDeleteConfirm(bool show);

    Q_INVOKABLE void requestAccess(); ///< scans if the permission is granted
    /// Searches for duplicates; a new search drops a running one. If the library cannot be read, there are no
    /// groups, hasScanFailed() is set and the permission is read again.
    Q_INVOKABLE void scan();
    Q_INVOKABLE void stopScan(); ///< leaves no groups
    Q_INVOKABLE void requestDelete();
    /// Moves the checked items to the library's "Recently Deleted" album, records the deletion in the history
    /// and scans again. If it fails or is stopped, or if the user declines the system's own question, nothing
    /// changes, and hasDeletionFailed() or wasDeletionStopped() is set until the next scan. Ignored while a
    /// deletion is running.
    Q_INVOKABLE void confirmDelete();

    // The state above as properties for QML.
    BackgroundTask* searchTask() { return &m_search; }
    BackgroundTask* removalTask() { return &m_removal; }
    bool isUndecided() const { return m_authState == core::PhotoAccessState::notDetermined; }
    bool isDenied() const { return m_authState == core::PhotoAccessState::denied; }
    DuplicateGroupsModel* groupsModel() { return &m_groups; }
    int groupCount() const { return m_groups.rowCount(); }
    QString totalWasted() const;
    int checkedCount() const { return m_groups.checkedCount(); } ///< ids without an item are not counted
    QString selectedSize() const;
    bool canStopDeletion() const; ///< a deletion shows progress and can be stopped while it runs
    bool hasDeletionFailed() const { return m_deletion == platform::PhotoDeletion::failed; }
    bool wasDeletionStopped() const { return m_deletion == platform::PhotoDeletion::stopped; }
    int deletedCount() const { return m_lastDeletedCount.value_or(0); } ///< 0 until a deletion succeeds

Q_SIGNALS:
    void authStateChanged();
    void groupsChanged();
    void isLoadingChanged();
    void hasScannedChanged();
    void isReadOnlyChanged();
    void selectionChanged();
    void showDeleteConfirmChanged();
    void deletionChanged();

private:
    void setAuthState(core::PhotoAccessState state);
    void setGroups(std::vector<core::DuplicatePhotoGroup> groups);
    void takeGroups(std::optional<std::vector<core::DuplicatePhotoGroup>> found);
    void takeDeletion(platform::PhotoDeletion outcome, int count);

    platform::PhotoLibrary m_library;
    HistoryStore& m_history;
    platform::Executor m_executor;
    core::PhotoAccessState m_authState;
    DuplicateGroupsModel m_groups;
    std::int64_t m_totalWastedBytes = 0;
    BackgroundTask m_search;
    BackgroundTask m_removal;
    bool m_wasScanStopped = false;
    bool m_hasScanned = false;
    bool m_hasScanFailed = false;
    bool m_isReadOnly = false;
    bool m_showDeleteConfirm = false;
    platform::PhotoDeletion m_deletion = platform::PhotoDeletion::done; ///< outcome of the last one
    std::optional<int> m_lastDeletedCount;
};
