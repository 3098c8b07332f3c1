#pragma once

#include "app/history/history_store.h"
#include "app/models/duplicate_photos_view_model.h"
#include "app/models/history_model.h"
#include "app/models/onboarding_model.h"
#include "app/models/scan_view_model.h"
#include "app/models/startup_view_model.h"
#include "app/models/uninstall_view_model.h"
#include "platform/base/executor.h"
#include "platform/files/disk.h"
#include "platform/photos/photo_library.h"

#include <QObject>
#include <QQmlEngine>

/// Factory of the screens' models, a QML singleton with one instance per engine. Each function returns a new
/// model that is owned by the screen passed to it.
class ScreenModels : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool isDiskReadOnly READ isDiskReadOnly CONSTANT)

public:
    /// `engine` owns it; `history` must outlive the engine.
    ScreenModels(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                 platform::PhotoLibrary photos, QQmlEngine* engine);

    bool isDiskReadOnly() const { return m_disk.isReadOnly(); }

    static ScreenModels* create(QQmlEngine* engine, QJSEngine*);

    Q_INVOKABLE ScanViewModel* cleanup(QObject* screen) const;
    Q_INVOKABLE UninstallViewModel* uninstall(QObject* screen) const;
    Q_INVOKABLE StartupViewModel* startup(QObject* screen) const;
    Q_INVOKABLE DuplicatePhotosViewModel* duplicates(QObject* screen) const;
    Q_INVOKABLE HistoryModel* history(QObject* screen) const;
    Q_INVOKABLE OnboardingModel* onboarding(QObject* shell) const;

private:
    platform::Disk m_disk;
    HistoryStore& m_history;
    platform::Executor m_executor;
    platform::PhotoLibrary m_photos;
};
