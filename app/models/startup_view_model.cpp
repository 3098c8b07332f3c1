#include "app/models/startup_view_model.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "app/text/outcome_text.h"

#include <utility>

using namespace Qt::StringLiterals;

StartupViewModel::StartupViewModel(platform::Disk disk, platform::Executor executor, QObject* parent)
    : QObject(parent),
      m_disk(std::move(disk)),
      m_executor(std::move(executor)),
      m_items(this),
      m_loading(this),
      m_removal(this) {
    connect(&m_loading, &BackgroundTask::runningChanged, this, &StartupViewModel::isLoadingChanged);
    for (const auto signal : {&StartupViewModel::failureChanged, &StartupViewModel::putBackChanged})
        connect(&Localizer::shared(), &Localizer::languageChanged, this, signal);
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
    m_disabled.reset();
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
    m_putBack.reset();
    if (disabled) {
        m_disabled = *disabled;
        m_items.remove(item.id);
        Q_EMIT itemsChanged();
        m_lastDisabledName = item.displayName;
        Q_EMIT lastDisabledNameChanged();
    } else {
        m_failure = Failure{item.displayName, disabled.error(), u"disable_failed"_s};
    }
    Q_EMIT failureChanged();
    Q_EMIT putBackChanged();
    setItemToDisable(std::nullopt);
}

void StartupViewModel::enableAgain() {
    if (!canPutBack() || m_removal.isRunning())
        return;
    m_removal.runRemoval(
        m_executor,
        [item = *std::exchange(m_disabled, std::nullopt), disk = m_disk](platform::Progress&) {
            return core::LumvaleStartupItems::enable(item, disk);
        },
        [](const platform::Result<bool>&) {},
        [this, name = m_lastDisabledName.value_or(std::string())](const platform::Result<bool>& enabled) {
            takePutBack(name, enabled);
        });
    m_isPuttingBack = true;
    Q_EMIT putBackChanged();
}

void StartupViewModel::takePutBack(const std::string& name, const platform::Result<bool>& enabled) {
    m_isPuttingBack = false;
    m_lastDisabledName.reset();
    if (enabled)
        m_putBack = PutBack{name, *enabled};
    else
        m_failure = Failure{name, enabled.error(), u"enable_failed"_s};
    Q_EMIT lastDisabledNameChanged();
    Q_EMIT failureChanged();
    Q_EMIT putBackChanged();
    load();
}

QString StartupViewModel::putBackText() const {
    if (!m_putBack)
        return {};
    return ::tr(m_putBack->isLoaded ? u"app_put_back"_s : u"agent_not_loaded"_s)
        .arg(display::name(m_putBack->name));
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
    if (!m_failure)
        return {};
    const bool isDisabled = m_failure->key == u"disable_failed"_s;
    return ::tr(m_failure->key)
        .arg(display::name(m_failure->name),
             isDisabled ? outcome::reason(m_failure->error) : outcome::putBackReason(m_failure->error));
}

void StartupViewModel::setItemToDisable(std::optional<core::StartupItem> item) {
    m_itemToDisable = std::move(item);
    Q_EMIT itemToDisableChanged();
}
