#include "app/models/duplicate_photos_view_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "platform/base/bytes.h"

#include <QPointer>

#include <utility>

DuplicatePhotosViewModel::DuplicatePhotosViewModel(platform::PhotoLibrary library, HistoryStore& history,
                                                   platform::Executor executor, QObject* parent)
    : QObject(parent),
      m_library(std::move(library)),
      m_history(history),
      m_executor(std::move(executor)),
      m_authState(core::LumvalePhotoDuplicates::authorizationStatus(m_library)),
      m_groups(this),
      m_search(this),
      m_removal(this) {
    connect(&m_groups, &DuplicateGroupsModel::checkedChanged, this,
            &DuplicatePhotosViewModel::selectionChanged);
    connect(&m_search, &BackgroundTask::runningChanged, this, &DuplicatePhotosViewModel::isLoadingChanged);
}

void DuplicatePhotosViewModel::requestAccess() {
    core::LumvalePhotoDuplicates::requestAccess(
        [model = QPointer(this)](core::PhotoAccessState state) {
            if (!model)
                return;
            model->setAuthState(state);
            if (state == core::PhotoAccessState::limited || state == core::PhotoAccessState::authorized)
                model->scan();
        },
        m_executor, m_library);
}

void DuplicatePhotosViewModel::scan() {
    m_wasScanStopped = false;
    m_deletion = platform::PhotoDeletion::done;
    Q_EMIT deletionChanged();
    m_groups.setChecked({});
    core::LumvalePhotoDuplicates::canDelete(
        [model = QPointer(this)](bool canDelete) {
            if (!model)
                return;
            model->m_isReadOnly = !canDelete;
            Q_EMIT model->isReadOnlyChanged();
        },
        m_executor, m_library);
    m_search.run(
        [this](auto progress, auto completion) {
            core::LumvalePhotoDuplicates::findExactDuplicates(std::move(completion), m_executor, m_library,
                                                              std::move(progress));
        },
        [this](auto found) { takeGroups(std::move(found)); });
}

void DuplicatePhotosViewModel::stopScan() {
    if (!isLoading())
        return;
    m_wasScanStopped = true;
    setGroups({}); // the earlier groups may hold photos that have been deleted since
    m_search.stop();
}

void DuplicatePhotosViewModel::takeGroups(std::optional<std::vector<core::DuplicatePhotoGroup>> found) {
    m_hasScanFailed = !found;
    if (m_hasScanFailed) // the permission may have been revoked
        setAuthState(core::LumvalePhotoDuplicates::authorizationStatus(m_library));
    setGroups(std::move(found).value_or(std::vector<core::DuplicatePhotoGroup>()));
    m_hasScanned = true;
    Q_EMIT hasScannedChanged();
}

void DuplicatePhotosViewModel::setGroups(std::vector<core::DuplicatePhotoGroup> groups) {
    m_totalWastedBytes = 0;
    for (const core::DuplicatePhotoGroup& group : groups)
        m_totalWastedBytes = platform::addBytes(m_totalWastedBytes, group.totalWastedBytes());
    m_groups.setGroups(std::move(groups));
    Q_EMIT groupsChanged();
}

void DuplicatePhotosViewModel::setShowDeleteConfirm(bool show) {
    m_showDeleteConfirm = show;
    Q_EMIT showDeleteConfirmChanged();
}

void DuplicatePhotosViewModel::requestDelete() {
    if (!checked().empty())
        setShowDeleteConfirm(true);
}

void DuplicatePhotosViewModel::confirmDelete() {
    const std::vector<core::DuplicatePhotoItem> items = m_groups.checkedItems();
    // A second request would succeed without deleting anything and be recorded in the history.
    if (items.empty() || m_removal.isRunning())
        return;
    m_removal.runRemoval(
        [&](auto progress, auto completion) {
            core::LumvalePhotoDuplicates::deleteItems(items, std::move(completion), m_executor, m_library,
                                                      std::move(progress));
        },
        [history = QPointer(&m_history), sizeBytes = selectedBytes()](platform::PhotoDeletion outcome) {
            if (history && outcome == platform::PhotoDeletion::done)
                history->record(::tr(QStringLiteral("photo_duplicates_history_name")).toStdString(),
                                sizeBytes);
        },
        [this, count = checkedCount()](platform::PhotoDeletion outcome) { takeDeletion(outcome, count); });
}

void DuplicatePhotosViewModel::takeDeletion(platform::PhotoDeletion outcome, int count) {
    m_deletion = outcome;
    if (outcome == platform::PhotoDeletion::done)
        m_lastDeletedCount = count;
    Q_EMIT deletionChanged();
    if (outcome == platform::PhotoDeletion::done)
        scan();
}

bool DuplicatePhotosViewModel::canStopDeletion() const {
    return core::LumvalePhotoDuplicates::canStopDeletion(m_library);
}

QString DuplicatePhotosViewModel::totalWasted() const {
    return display::size(m_totalWastedBytes);
}

QString DuplicatePhotosViewModel::selectedSize() const {
    return display::size(selectedBytes());
}

void DuplicatePhotosViewModel::setAuthState(core::PhotoAccessState state) {
    m_authState = state;
    Q_EMIT authStateChanged();
}
