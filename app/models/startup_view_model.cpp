#include "app/models/startup_view_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/outcome_text.h"

using namespace Qt::StringLiterals;

StartupViewModel::StartupViewModel(platform::Disk disk, platform::Executor executor, QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_executor(std::move(executor)),
      m_items(this),
      m_loading(this),
      m_removal(this) {
    connect(&m_loading, &BackgroundTask::runningChanged, this, &StartupViewModel::isLoadingChanged);
    connect(&Localizer::shared(), &Localizer::languageChanged, this, &StartupViewModel::failureChanged);
}

void StartupViewModel::load() {
    m_loading.run(
        m_executor, [disk = m_disk](platform::Progress&) { return core::LumvaleStartupItems::scan(disk); },
        [this](std::vector<core::StartupItem> items) {
            m_items.setItems(std::move(items));
            Q_EMIT itemsChanged();
        });
}

void StartupViewModel::requestDisable(int row) {
    if (row >= 0 && row < m_items.rowCount() && !items()[static_cast<std::size_t>(row)].isSystemWide)
        requestDisable(items()[static_cast<std::size_t>(row)]);
}

void StartupViewModel::confirmDisable() {
    if (!m_itemToDisable || m_removal.isRunning())
        return;
    m_removal.runRemoval(
        m_executor,
        [item = *m_itemToDisable, disk = m_disk](platform::Progress&) {
            return core::LumvaleStartupItems::disable(item, disk);
        },
        [](const platform::Result<core::DisabledItem>&) {},
        [this, item = *m_itemToDisable](const platform::Result<core::DisabledItem>& disabled) {
            takeResult(item, disabled);
        });
}

void StartupViewModel::takeResult(const core::StartupItem& item,
                                  const platform::Result<core::DisabledItem>& disabled) {
    m_failure.reset();
    if (disabled) {
        m_items.remove(item.id);
        Q_EMIT itemsChanged();
        m_lastDisabledName = item.displayName;
        Q_EMIT lastDisabledNameChanged();
    } else {
        m_failure = Failure{item.displayName, disabled.error()};
    }
    Q_EMIT failureChanged();
    setItemToDisable(std::nullopt);
}

void StartupViewModel::setShowDisableConfirm(bool show) {
    if (!show && m_itemToDisable)
        setItemToDisable(std::nullopt);
}

QString StartupViewModel::itemToDisableName() const {
    return m_itemToDisable ? display::name(m_itemToDisable->displayName) : QString();
}

QString StartupViewModel::disabledName() const {
    return m_lastDisabledName ? display::name(*m_lastDisabledName) : QString();
}

QString StartupViewModel::failedText() const {
    return m_failure ? ::tr(u"disable_failed"_s)
                           .arg(display::name(m_failure->name), outcome::reason(m_failure->error))
                     : QString();
}

void StartupViewModel::setItemToDisable(std::optional<core::StartupItem> item) {
    m_itemToDisable = std::move(item);
    Q_EMIT itemToDisableChanged();
}
