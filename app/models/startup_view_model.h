#pragma once

#include "app/execution/background_task.h"
#include "app/models/startup_items_model.h"
#include "core/startup/startup_items.h"
#include "platform/base/executor.h"
#include "platform/base/result.h"
#include "platform/files/disk.h"

#include <QObject>

#include <optional>
#include <string>
#include <vector>

/// The view model of the startup screen. Interface thread only. Items are loaded and disabled in the
/// background. Change signals are emitted after the new value is readable.
class StartupViewModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(BackgroundTask* removalTask READ removalTask CONSTANT)
    Q_PROPERTY(StartupItemsModel* items READ itemsModel CONSTANT)
    Q_PROPERTY(bool hasItems READ hasItems NOTIFY itemsChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY isLoadingChanged)
    Q_PROPERTY(bool showDisableConfirm READ showDisableConfirm WRITE setShowDisableConfirm NOTIFY
                   itemToDisableChanged)
    Q_PROPERTY(QString itemToDisableName READ itemToDisableName NOTIFY itemToDisableChanged)
    Q_PROPERTY(bool hasDisabled READ hasDisabled NOTIFY lastDisabledNameChanged)
    Q_PROPERTY(QString lastDisabledName READ disabledName NOTIFY lastDisabledNameChanged)
    Q_PROPERTY(QString failedText READ failedText NOTIFY failureChanged)
    Q_PROPERTY(bool canPutBack READ canPutBack NOTIFY putBackChanged)
    Q_PROPERTY(bool isPuttingBack READ isPuttingBack NOTIFY putBackChanged)
    Q_PROPERTY(QString putBackText READ putBackText NOTIFY putBackChanged)

public:
    /// Does not access the disk.
    StartupViewModel(platform::Disk disk, platform::Executor executor, QObject* parent = nullptr);

    const std::vector<core::StartupItem>& items() const { return m_items.items(); }
    bool isLoading() const { return m_loading.isRunning(); }
    const std::optional<core::StartupItem>& itemToDisable() const { return m_itemToDisable; }
    const std::optional<std::string>& lastDisabledName() const { return m_lastDisabledName; }

    Q_INVOKABLE void load();
    void requestDisable(core::StartupItem item) { setItemToDisable(std::move(item)); }
    /// Ignores rows that do not exist, and those of system-wide items, which cannot be disabled.
    Q_INVOKABLE void requestDisable(int row);
    /// Starts disabling itemToDisable(). At the end it leaves the list, unless that failed; itemToDisable()
    /// is reset in both cases. Does nothing while an item is being disabled.
    Q_INVOKABLE void confirmDisable();

    /// Starts enabling the item that was disabled last, whose property list is in the Trash. At the end the
    /// list is loaded again. Does nothing if there is none, or while an item is being disabled.
    Q_INVOKABLE void enableAgain();

    // The state above as properties for QML. Absent texts are empty.
    BackgroundTask* removalTask() { return &m_removal; }
    StartupItemsModel* itemsModel() { return &m_items; }
    bool hasItems() const { return !items().empty(); }
    bool showDisableConfirm() const { return m_itemToDisable.has_value(); }
    void setShowDisableConfirm(bool show); ///< false resets itemToDisable(); true is ignored
    QString itemToDisableName() const;
    bool hasDisabled() const { return m_lastDisabledName.has_value(); }
    QString disabledName() const;
    QString failedText() const; ///< why the last item could not be disabled or put back; empty if it could
    bool canPutBack() const { return m_disabled && m_disabled->propertyList; }
    bool isPuttingBack() const { return m_isPuttingBack; }
    QString putBackText() const; ///< the last item was put back; empty if it was not

Q_SIGNALS:
    void itemsChanged();
    void isLoadingChanged();
    void itemToDisableChanged();
    void lastDisabledNameChanged();
    void failureChanged();
    void putBackChanged();

private:
    void takeResult(const core::StartupItem& item, const platform::Result<core::DisabledItem>& disabled);
    void takePutBack(const std::string& name, const platform::Result<bool>& enabled);
    void setItemToDisable(std::optional<core::StartupItem> item);

    platform::Disk m_disk;
    platform::Executor m_executor;
    StartupItemsModel m_items;
    BackgroundTask m_loading;
    BackgroundTask m_removal;
    std::optional<core::StartupItem> m_itemToDisable;
    std::optional<std::string> m_lastDisabledName;
    struct Failure {
        std::string name;
        platform::Error error;
        QString key; ///< translation key of the sentence
    };
    std::optional<Failure> m_failure; ///< of the last item, if it could not be disabled or put back
    std::optional<core::DisabledItem> m_disabled; ///< of the last item; absent once it was put back
    bool m_isPuttingBack = false;
    struct PutBack {
        std::string name;
        bool isLoaded;
    };
    std::optional<PutBack> m_putBack; ///< of the last item, if it was put back
};
