#include "app/models/uninstall_view_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/health_text.h"
#include "app/text/outcome_text.h"
#include "core/removal/deletion.h"
#include "core/uninstall/installed_apps.h"
#include "core/uninstall/related_files.h"
#include "platform/base/bytes.h"

#include <QPointer>

#include <algorithm>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;

UninstallViewModel::UninstallViewModel(platform::Disk disk, HistoryStore& history,
                                       platform::Executor executor, QObject* parent, RunningCheck isRunning)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_isRunning(std::move(isRunning)),
      m_apps(this),
      m_loading(this),
      m_leftovers(this),
      m_search(this),
      m_removal(this),
      m_putBack(m_disk, m_history, m_executor, m_removal, this) {
    connect(&m_putBack, &PutBackModel::finished, this, &UninstallViewModel::takePutBack);
    connect(&m_loading, &BackgroundTask::runningChanged, this, &UninstallViewModel::isLoadingAppsChanged);
    connect(&m_search, &BackgroundTask::runningChanged, this,
            &UninstallViewModel::isSearchingLeftoversChanged);
    connect(&m_leftovers, &ScanItemsModel::checkedChanged, this, &UninstallViewModel::selectionChanged);
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &UninstallViewModel::refreshFreeSpace);
    connect(&Localizer::shared(), &Localizer::languageChanged, this,
            &UninstallViewModel::lastUninstalledChanged);
}

std::int64_t UninstallViewModel::selectedBytes() const {
    if (!m_selectedApp)
        return 0;
    const std::int64_t ofApp = isSelectedAppChecked() ? m_selectedApp->sizeBytes : 0;
    return platform::addBytes(ofApp, m_leftovers.checkedItems().bytes());
}

void UninstallViewModel::loadApps() {
    m_keptApp.reset();
    Q_EMIT lastUninstalledChanged();
    reloadApps();
}

void UninstallViewModel::reloadApps() {
    m_loading.run(
        m_executor,
        [disk = m_disk](platform::Progress& progress) {
            return core::LumvaleUninstaller::scanInstalledApps(disk, &progress);
        },
        [this](std::vector<core::InstalledApp> apps) {
            m_apps.setApps(std::move(apps));
            Q_EMIT appsChanged();
        });
    refreshFreeSpace();
}

void UninstallViewModel::refreshFreeSpace() {
    m_freeSpaceText = display::freeSpace(core::LumvaleScanner::healthScore(m_disk));
    Q_EMIT freeSpaceTextChanged();
}

void UninstallViewModel::select(core::InstalledApp app) {
    setSelectedApp(app);
    setLeftovers({});
    setChecked({app.id});
    m_search.run(
        m_executor,
        [disk = m_disk, app](platform::Progress& progress) {
            return core::LumvaleUninstaller::relatedFiles(app, disk, &progress);
        },
        [this](std::vector<core::ScanItem> items) {
            std::set<std::string> ids = checked();
            for (const core::ScanItem& item : items)
                if (item.safeByDefault)
                    ids.insert(item.id);
            setLeftovers(std::move(items));
            setChecked(ids);
        });
}

void UninstallViewModel::select(int row) {
    if (row >= 0 && row < m_apps.rowCount())
        select(m_apps.at(row));
}

void UninstallViewModel::searchAgain() {
    if (m_selectedApp)
        select(core::InstalledApp(*m_selectedApp));
}

void UninstallViewModel::clearSelection() {
    m_search.stop();
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
    setChecked(ids);
}

void UninstallViewModel::setShowDeleteConfirm(bool show) {
    m_showDeleteConfirm = show;
    Q_EMIT showDeleteConfirmChanged();
}

void UninstallViewModel::requestUninstall() {
    m_isSelectedAppRunning = m_selectedApp && m_selectedApp->bundleIdentifier
                             && m_isRunning(m_disk, *m_selectedApp->bundleIdentifier);
    setShowDeleteConfirm(true);
}

void UninstallViewModel::confirmUninstall() {
    if (!m_selectedApp || m_removal.isRunning())
        return;
    std::map<std::string, std::int64_t> sizes{{m_selectedApp->path, m_selectedApp->sizeBytes}};
    for (const core::ScanItem& item : leftovers())
        sizes[item.path] = item.sizeBytes;
    m_putBack.withdraw();
    auto recorded = std::make_shared<std::vector<RecordedDeletion>>();
    m_removal.runRemoval(
        m_executor,
        [paths = checkedPaths(), disk = m_disk](platform::Progress& progress) {
            return core::LumvaleScanner::deletePaths(paths, disk, &progress);
        },
        [sizes = std::move(sizes), name = m_selectedApp->name, history = QPointer(&m_history),
         recorded](const core::DeletionOutcome& outcome) {
            std::map<std::string, std::int64_t> moved;
            std::int64_t bytes = 0;
            for (const std::string& path : outcome.succeeded)
                if (const auto size = sizes.find(path); size != sizes.end()) {
                    moved.insert(*size);
                    bytes = platform::addBytes(bytes, size->second);
                }
            if (history && !outcome.succeeded.empty())
                recorded->push_back({history->record(name, bytes), std::move(moved)});
        },
        [this, recorded, app = *m_selectedApp](core::DeletionOutcome outcome) {
            m_putBack.offer(outcome.moved, std::move(*recorded));
            takeRemoval(app, std::move(outcome));
        });
}

void UninstallViewModel::takePutBack() {
    m_deletion.reset();
    m_lastUninstalled.reset();
    loadApps();
}

void UninstallViewModel::takeRemoval(const core::InstalledApp& app, core::DeletionOutcome outcome) {
    const auto& moved = outcome.succeeded;
    const bool isAppMoved = std::find(moved.begin(), moved.end(), app.path) != moved.end();
    const bool isComplete = isAppMoved && outcome.failed.empty() && outcome.left.empty();
    const auto ofApp =
        std::find_if(outcome.failed.begin(), outcome.failed.end(),
                     [&](const core::DeletionFailure& failure) { return failure.path == app.path; });
    m_keptApp.reset();
    if (ofApp != outcome.failed.end() && !outcome::isGone(ofApp->error)) {
        m_keptApp = KeptApp{app.name, ofApp->error};
        outcome.failed.erase(ofApp);
    }
    m_deletion = std::move(outcome);
    m_lastUninstalled = isAppMoved ? std::optional(app.name) : std::nullopt;
    Q_EMIT lastUninstalledChanged();
    clearSelection();
    if (isComplete) {
        m_apps.remove(app.id);
        Q_EMIT appsChanged();
        refreshFreeSpace();
    } else {
        reloadApps();
    }
}

QString UninstallViewModel::movedText() const {
    if (!m_deletion || m_lastUninstalled || m_deletion->succeeded.empty())
        return {};
    return QString::number(m_deletion->succeeded.size()) + u' ' + ::tr(u"deleted_confirmation"_s);
}

QString UninstallViewModel::stayedText() const {
    const QString app =
        m_keptApp
            ? ::tr(u"app_stayed"_s).arg(display::name(m_keptApp->name), outcome::reason(m_keptApp->error))
            : QString();
    return outcome::joined({app, m_deletion ? outcome::stayed(*m_deletion) : QString()});
}

std::vector<std::string> UninstallViewModel::checkedPaths() const {
    std::vector<std::string> paths;
    const std::set<std::string> ids = checked();
    for (const core::ScanItem& item : leftovers())
        if (ids.contains(item.id))
            paths.push_back(item.path);
    if (isSelectedAppChecked())
        paths.push_back(m_selectedApp->path);
    return paths;
}

QString UninstallViewModel::selectedAppName() const {
    return m_selectedApp ? display::name(m_selectedApp->name) : QString();
}

QByteArray UninstallViewModel::selectedAppPath() const {
    return m_selectedApp ? QByteArray::fromStdString(m_selectedApp->path) : QByteArray();
}

QString UninstallViewModel::selectedAppSize() const {
    return m_selectedApp ? display::size(m_selectedApp->sizeBytes) : QString();
}

QByteArray UninstallViewModel::selectedBundle() const {
    return QByteArray::fromStdString(m_selectedApp ? m_selectedApp->path : std::string());
}

QString UninstallViewModel::selectedSize() const {
    return display::size(selectedBytes());
}

QString UninstallViewModel::lastUninstalledName() const {
    return m_lastUninstalled ? display::name(*m_lastUninstalled) : QString();
}

void UninstallViewModel::setSelectedApp(std::optional<core::InstalledApp> app) {
    m_selectedApp = std::move(app);
    Q_EMIT selectedAppChanged();
    Q_EMIT selectionChanged();
}

void UninstallViewModel::setLeftovers(std::vector<core::ScanItem> items) {
    m_leftovers.setApp(m_selectedApp);
    m_leftovers.setItems(std::move(items));
    Q_EMIT leftoversChanged();
    Q_EMIT selectionChanged();
}
