#include "app/models/uninstall_view_model.h"

#include "app/execution/qt_executor.h"
#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/health_text.h"
#include "core/removal/deletion.h"
#include "core/uninstall/installed_apps.h"
#include "core/uninstall/related_files.h"
#include "platform/base/bytes.h"

UninstallViewModel::UninstallViewModel(platform::Disk disk, HistoryStore& history,
                                       platform::Executor executor, QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_apps(this),
      m_leftovers(this) {
    connect(&m_leftovers, &ScanItemsModel::checkedChanged, this, &UninstallViewModel::selectionChanged);
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &UninstallViewModel::refreshFreeSpace);
}

std::int64_t UninstallViewModel::selectedBytes() const {
    if (!m_selectedApp)
        return 0;
    const std::int64_t ofApp = isSelectedAppChecked() ? m_selectedApp->sizeBytes : 0;
    return platform::addBytes(ofApp, m_leftovers.checkedBytes());
}

void UninstallViewModel::loadApps() {
    setIsLoadingApps(true);
    refreshFreeSpace();
    runInBackground(
        m_executor, this, [disk = m_disk] { return core::LumvaleUninstaller::scanInstalledApps(disk); },
        [](UninstallViewModel& model, std::vector<core::InstalledApp> apps) {
            model.m_apps.setApps(std::move(apps));
            Q_EMIT model.appsChanged();
            model.setIsLoadingApps(false);
        });
}

void UninstallViewModel::refreshFreeSpace() {
    m_freeSpaceText = display::freeSpace(core::LumvaleScanner::healthScore(m_disk));
    Q_EMIT freeSpaceTextChanged();
}

void UninstallViewModel::select(core::InstalledApp app) {
    setSelectedApp(app);
    setLeftovers({});
    setChecked({app.id});
    setIsSearchingLeftovers(true);
    runInBackground(
        m_executor, this, [disk = m_disk, app] { return core::LumvaleUninstaller::relatedFiles(app, disk); },
        [id = app.id](UninstallViewModel& model, std::vector<core::ScanItem> items) {
            model.takeLeftovers(id, std::move(items));
        });
}

void UninstallViewModel::select(int row) {
    if (row >= 0 && row < m_apps.rowCount())
        select(apps()[static_cast<std::size_t>(row)]);
}

void UninstallViewModel::takeLeftovers(const std::string& appId, std::vector<core::ScanItem> items) {
    if (!m_selectedApp || m_selectedApp->id != appId)
        return;
    // An application selected twice is searched twice: the second result would check files again that the
    // user has unchecked since the first.
    if (!m_isSearchingLeftovers)
        return;
    std::set<std::string> ids = checked();
    for (const core::ScanItem& item : items)
        if (item.safeByDefault)
            ids.insert(item.id);
    setLeftovers(std::move(items));
    setChecked(std::move(ids));
    setIsSearchingLeftovers(false);
}

void UninstallViewModel::clearSelection() {
    setSelectedApp(std::nullopt);
    setLeftovers({});
    setChecked({});
}

void UninstallViewModel::toggleSelectedApp() {
    if (!m_selectedApp)
        return;
    std::set<std::string> ids = checked();
    if (ids.erase(m_selectedApp->id) == 0)
        ids.insert(m_selectedApp->id);
    setChecked(std::move(ids));
}

void UninstallViewModel::setShowDeleteConfirm(bool show) {
    m_showDeleteConfirm = show;
    Q_EMIT showDeleteConfirmChanged();
}

void UninstallViewModel::confirmUninstall() {
    if (!m_selectedApp)
        return;
    const core::InstalledApp app = *m_selectedApp;
    const std::int64_t bytes = selectedBytes();
    // Failures are ignored: the history and the banner report the selection.
    (void)core::LumvaleScanner::deletePaths(checkedPaths(), m_disk);
    m_history.record(app.name, bytes);
    m_lastUninstalled = app.name;
    Q_EMIT lastUninstalledChanged();
    m_apps.remove(app.id);
    Q_EMIT appsChanged();
    clearSelection();
    refreshFreeSpace();
}

std::vector<std::string> UninstallViewModel::checkedPaths() const {
    std::vector<std::string> paths;
    for (const core::ScanItem& item : leftovers())
        if (checked().contains(item.id))
            paths.push_back(item.path);
    if (isSelectedAppChecked())
        paths.push_back(m_selectedApp->path);
    return paths;
}

QString UninstallViewModel::selectedAppName() const {
    return m_selectedApp ? display::name(m_selectedApp->name) : QString();
}

QString UninstallViewModel::selectedAppSize() const {
    return m_selectedApp ? display::size(m_selectedApp->sizeBytes) : QString();
}

QString UninstallViewModel::selectedSize() const {
    return display::size(selectedBytes());
}

QString UninstallViewModel::lastUninstalledName() const {
    return m_lastUninstalled ? display::name(*m_lastUninstalled) : QString();
}

void UninstallViewModel::setIsLoadingApps(bool isLoading) {
    m_isLoadingApps = isLoading;
    Q_EMIT isLoadingAppsChanged();
}

void UninstallViewModel::setSelectedApp(std::optional<core::InstalledApp> app) {
    m_selectedApp = std::move(app);
    Q_EMIT selectedAppChanged();
    Q_EMIT selectionChanged();
}

void UninstallViewModel::setLeftovers(std::vector<core::ScanItem> items) {
    m_leftovers.setItems(std::move(items));
    Q_EMIT leftoversChanged();
    Q_EMIT selectionChanged();
}

void UninstallViewModel::setIsSearchingLeftovers(bool isSearching) {
    m_isSearchingLeftovers = isSearching;
    Q_EMIT isSearchingLeftoversChanged();
}
