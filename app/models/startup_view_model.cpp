#include "app/models/startup_view_model.h"

#include "app/execution/qt_executor.h"
#include "app/text/display.h"
#include "core/startup/startup_items.h"

StartupViewModel::StartupViewModel(platform::Disk disk, platform::Executor executor, QObject* parent)
    : QObject(parent), m_disk(std::move(disk)), m_executor(std::move(executor)), m_items(this) {}

void StartupViewModel::load() {
    setIsLoading(true);
    runInBackground(
        m_executor, this, [disk = m_disk] { return core::LumvaleStartupItems::scan(disk); },
        [](StartupViewModel& model, std::vector<core::StartupItem> items) {
            model.m_items.setItems(std::move(items));
            Q_EMIT model.itemsChanged();
            model.setIsLoading(false);
        });
}

void StartupViewModel::requestDisable(int row) {
    if (row >= 0 && row < m_items.rowCount())
        requestDisable(items()[static_cast<std::size_t>(row)]);
}

void StartupViewModel::confirmDisable() {
    if (!m_itemToDisable)
        return;
    const core::StartupItem item = *m_itemToDisable;
    if (core::LumvaleStartupItems::disable(item, m_disk)) {
        m_items.remove(item.id);
        Q_EMIT itemsChanged();
        m_lastDisabledName = item.displayName;
        Q_EMIT lastDisabledNameChanged();
    }
    setItemToDisable(std::nullopt);
}

void StartupViewModel::setShowDisableConfirm(bool show) {
    if (!show)
        setItemToDisable(std::nullopt);
}

QString StartupViewModel::itemToDisableName() const {
    return m_itemToDisable ? display::name(m_itemToDisable->displayName) : QString();
}

QString StartupViewModel::disabledName() const {
    return m_lastDisabledName ? display::name(*m_lastDisabledName) : QString();
}

void StartupViewModel::setIsLoading(bool isLoading) {
    m_isLoading = isLoading;
    Q_EMIT isLoadingChanged();
}

void StartupViewModel::setItemToDisable(std::optional<core::StartupItem> item) {
    m_itemToDisable = std::move(item);
    Q_EMIT itemToDisableChanged();
}
