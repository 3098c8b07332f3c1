#pragma once

#include "app/models/startup_items_model.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"

#include <QObject>

#include <optional>
#include <string>
#include <vector>

/// The state behind the startup screen. Interface thread only; the list is made in the background and dropped
/// when the model is gone by then. Observers are told once the new value can be read.
class StartupViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(StartupItemsModel* items READ itemsModel CONSTANT)
    Q_PROPERTY(bool hasItems READ hasItems NOTIFY itemsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool showDisableConfirm READ showDisableConfirm WRITE setShowDisableConfirm NOTIFY
                   itemToDisableChanged)
    Q_PROPERTY(QString itemToDisableName READ itemToDisableName NOTIFY itemToDisableChanged)
    Q_PROPERTY(bool hasDisabled READ hasDisabled NOTIFY lastDisabledNameChanged)
    Q_PROPERTY(QString lastDisabledName READ disabledName NOTIFY lastDisabledNameChanged)

public:
    /// Starts nothing and touches no file.
    StartupViewModel(platform::Disk disk, platform::Executor executor, QObject* parent = nullptr);

    const std::vector<core::StartupItem>& items() const { return m_items.items(); }
    bool isLoading() const { return m_isLoading; }
    const std::optional<core::StartupItem>& itemToDisable() const { return m_itemToDisable; }
    const std::optional<std::string>& lastDisabledName() const { return m_lastDisabledName; }

    Q_INVOKABLE void load();
    void requestDisable(core::StartupItem item) { setItemToDisable(std::move(item)); }
    Q_INVOKABLE void requestDisable(int row); ///< of the list
    /// Blocks while the item is disabled; where that fails, nothing changes but that it is no longer asked
    /// for.
    Q_INVOKABLE void confirmDisable();

    // The same state as the screen shows it; empty for what is absent.
    StartupItemsModel* itemsModel() { return &m_items; }
    bool hasItems() const { return !items().empty(); }
    bool showDisableConfirm() const { return m_itemToDisable.has_value(); }
    void setShowDisableConfirm(bool show); ///< false cancels; true does nothing, as an item has to be named
    QString itemToDisableName() const;
    bool hasDisabled() const { return m_lastDisabledName.has_value(); }
    QString disabledName() const;

Q_SIGNALS:
    void itemsChanged();
    void isLoadingChanged();
    void itemToDisableChanged();
    void lastDisabledNameChanged();

private:
    void setIsLoading(bool isLoading);
    void setItemToDisable(std::optional<core::StartupItem> item);

    platform::Disk m_disk;
    platform::Executor m_executor;
    StartupItemsModel m_items;
    bool m_isLoading = false;
    std::optional<core::StartupItem> m_itemToDisable;
    std::optional<std::string> m_lastDisabledName;
};
