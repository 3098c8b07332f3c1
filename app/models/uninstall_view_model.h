#pragma once

#include "app/execution/background_task.h"
#include "app/history/history_store.h"
#include "app/models/installed_apps_model.h"
#include "app/models/leftovers_model.h"
#include "app/models/put_back_model.h"
#include "core/removal/deletion.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/system/running_application.h"

#include <QByteArray>
#include <QObject>

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

/// The view model of the uninstall screen. Interface thread only. Searches and removals run in the
/// background; selecting another application drops the search for the files of the previous one, and a
/// removal is recorded in the history even if the model has been destroyed. Change signals are emitted after
/// the new value is readable.
class UninstallViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(BackgroundTask* appsTask READ appsTask CONSTANT)
    Q_PROPERTY(BackgroundTask* leftoversTask READ leftoversTask CONSTANT)
    Q_PROPERTY(BackgroundTask* removalTask READ removalTask CONSTANT)
    Q_PROPERTY(InstalledAppsModel* apps READ appsModel CONSTANT)
    Q_PROPERTY(bool hasApps READ hasApps NOTIFY appsChanged)
    Q_PROPERTY(bool isLoadingApps READ isLoadingApps NOTIFY isLoadingAppsChanged)
    Q_PROPERTY(PutBackModel* putBack READ putBackModel CONSTANT)
    Q_PROPERTY(bool hasSelectedApp READ hasSelectedApp NOTIFY selectedAppChanged)
    Q_PROPERTY(QString selectedAppName READ selectedAppName NOTIFY selectedAppChanged)
    Q_PROPERTY(QByteArray selectedAppPath READ selectedAppPath NOTIFY selectedAppChanged)
    Q_PROPERTY(QString selectedAppSize READ selectedAppSize NOTIFY selectedAppChanged)
    Q_PROPERTY(QByteArray selectedBundle READ selectedBundle NOTIFY selectedAppChanged)
    Q_PROPERTY(bool isSelectedAppChecked READ isSelectedAppChecked NOTIFY selectionChanged)
    Q_PROPERTY(ScanItemsModel* leftovers READ leftoversModel CONSTANT)
    Q_PROPERTY(bool hasLeftovers READ hasLeftovers NOTIFY leftoversChanged)
    Q_PROPERTY(bool isSearchingLeftovers READ isSearchingLeftovers NOTIFY isSearchingLeftoversChanged)
    Q_PROPERTY(int checkedCount READ checkedCount NOTIFY selectionChanged)
    Q_PROPERTY(QString selectedSize READ selectedSize NOTIFY selectionChanged)
    Q_PROPERTY(bool showDeleteConfirm READ showDeleteConfirm WRITE setShowDeleteConfirm NOTIFY
                   showDeleteConfirmChanged)
    Q_PROPERTY(bool isSelectedAppRunning READ isSelectedAppRunning NOTIFY showDeleteConfirmChanged)
    Q_PROPERTY(bool hasUninstalled READ hasUninstalled NOTIFY lastUninstalledChanged)
    Q_PROPERTY(QString lastUninstalled READ lastUninstalledName NOTIFY lastUninstalledChanged)
    Q_PROPERTY(QString movedText READ movedText NOTIFY lastUninstalledChanged)
    Q_PROPERTY(QString stayedText READ stayedText NOTIFY lastUninstalledChanged)
    Q_PROPERTY(QString freeSpaceText READ freeSpaceText NOTIFY freeSpaceTextChanged)

public:
    using RunningCheck = std::function<bool(const platform::Disk&, const std::string& bundleIdentifier)>;

    /// Does not access the disk.
    UninstallViewModel(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                       QObject* parent = nullptr, RunningCheck isRunning = platform::isApplicationRunning);

    const std::vector<core::InstalledApp>& apps() const { return m_apps.apps(); }
    bool isLoadingApps() const { return m_loading.isRunning(); }
    const std::optional<core::InstalledApp>& selectedApp() const { return m_selectedApp; }
    const std::vector<core::ScanItem>& leftovers() const { return m_leftovers.items(); }
    bool isSearchingLeftovers() const { return m_search.isRunning(); }
    std::set<std::string> checked() const { return m_leftovers.checked(); }
    std::int64_t selectedBytes() const; ///< total size of the checked entries; 0 without an application
    bool showDeleteConfirm() const { return m_showDeleteConfirm; }
    const std::optional<std::string>& lastUninstalled() const { return m_lastUninstalled; }
    const QString& freeSpaceText() const { return m_freeSpaceText; }

    void setChecked(const std::set<std::string>& ids) { m_leftovers.setChecked(ids); }
    void setShowDeleteConfirm(bool show);

    Q_INVOKABLE void loadApps();
    Q_INVOKABLE void refreshFreeSpace();
    void select(core::InstalledApp app);
    Q_INVOKABLE void select(int row); ///< ignores rows that do not exist
    Q_INVOKABLE void searchAgain();   ///< selects the selected application anew
    Q_INVOKABLE void clearSelection();
    Q_INVOKABLE void toggleSelectedApp();
    Q_INVOKABLE void requestUninstall(); ///< also while the confirmation is showing, to update it
    /// Starts moving the checked files to the Trash, then the application if checked. At the end the history
    /// gets one entry with what was moved. The application leaves the list if it and all files were moved;
    /// otherwise the list is loaded again. Does nothing during a removal.
    Q_INVOKABLE void confirmUninstall();

    // The state above as properties for QML. Absent texts are empty.
    BackgroundTask* appsTask() { return &m_loading; }
    BackgroundTask* leftoversTask() { return &m_search; }
    BackgroundTask* removalTask() { return &m_removal; }
    InstalledAppsModel* appsModel() { return &m_apps; }
    bool hasApps() const { return !apps().empty(); }
    PutBackModel* putBackModel() { return &m_putBack; } ///< of what the last removal moved
    bool hasSelectedApp() const { return m_selectedApp.has_value(); }
    QString selectedAppName() const;
    QByteArray selectedAppPath() const; ///< exact path on the disk
    QString selectedAppSize() const;
    QByteArray selectedBundle() const; ///< path as bytes, for the icon
    bool isSelectedAppChecked() const { return m_selectedApp && checked().contains(m_selectedApp->id); }
    bool isSelectedAppRunning() const { return m_isSelectedAppRunning; } ///< at the last requestUninstall()
    ScanItemsModel* leftoversModel() { return &m_leftovers; }
    bool hasLeftovers() const { return !leftovers().empty(); }
    int checkedCount() const { return static_cast<int>(checked().size()); }
    QString selectedSize() const;
    bool hasUninstalled() const { return m_lastUninstalled.has_value(); }
    QString lastUninstalledName() const;
    QString movedText() const;  ///< what the last removal moved, unless the application was moved
    QString stayedText() const; ///< what it left and why; the application only until the next loadApps()

Q_SIGNALS:
    void appsChanged();
    void isLoadingAppsChanged();
    void selectedAppChanged();
    void leftoversChanged();
    void isSearchingLeftoversChanged();
    void selectionChanged();
    void showDeleteConfirmChanged();
    void lastUninstalledChanged();
    void freeSpaceTextChanged();

private:
    void reloadApps();
    void setSelectedApp(std::optional<core::InstalledApp> app);
    void setLeftovers(std::vector<core::ScanItem> items);
    void takeRemoval(const core::InstalledApp& app, core::DeletionOutcome outcome);
    void takePutBack();
    std::vector<std::string> checkedPaths() const; ///< in the order of the list, then the application

    platform::Disk m_disk;
    HistoryStore& m_history;
    platform::Executor m_executor;
    RunningCheck m_isRunning;
    InstalledAppsModel m_apps;
    BackgroundTask m_loading;
    std::optional<core::InstalledApp> m_selectedApp;
    LeftoversModel m_leftovers; ///< also stores whether the application is checked
    BackgroundTask m_search;
    BackgroundTask m_removal;
    PutBackModel m_putBack;
    bool m_showDeleteConfirm = false;
    bool m_isSelectedAppRunning = false;
    std::optional<std::string> m_lastUninstalled; ///< set only if the application itself was moved
    struct KeptApp {
        std::string name;
        platform::Error error;
    };
    std::optional<KeptApp> m_keptApp;                ///< the last removal could not move the application
    std::optional<core::DeletionOutcome> m_deletion; ///< of the last removal, without that failure
    QString m_freeSpaceText;
};
