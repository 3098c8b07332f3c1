#pragma once

#include "app/execution/background_task.h"
#include "app/i18n/localizer.h"
#include "app/models/disk_choice_model.h"
#include "app/models/duplicate_groups_model.h"
#include "app/models/duplicate_photos_view_model.h"
#include "app/models/history_model.h"
#include "app/models/installed_apps_model.h"
#include "app/models/onboarding_model.h"
#include "app/models/put_back_model.h"
#include "app/models/scan_items_model.h"
#include "app/models/scan_view_model.h"
#include "app/models/startup_items_model.h"
#include "app/models/startup_view_model.h"
#include "app/models/storage_entries_model.h"
#include "app/models/type_ahead.h"
#include "app/models/uninstall_view_model.h"
#include "app/update/update_alert.h"

#include <QJSEngine>
#include <QQmlEngine>
#include <QtQmlIntegration>

// Registers types of the app layer in QML, since that layer does not depend on QML.

struct ForeignLocalizer {
    Q_GADGET
    QML_FOREIGN(Localizer)
    QML_NAMED_ELEMENT(Localizer)
    QML_SINGLETON

public:
    static Localizer* create(QQmlEngine*, QJSEngine*) {
        QJSEngine::setObjectOwnership(&Localizer::shared(), QJSEngine::CppOwnership);
        return &Localizer::shared();
    }
};

struct ForeignUpdateAlert {
    Q_GADGET
    QML_FOREIGN(UpdateAlert)
    QML_VALUE_TYPE(updateAlert)
};

struct ForeignBackgroundTask {
    Q_GADGET
    QML_FOREIGN(BackgroundTask)
    QML_NAMED_ELEMENT(BackgroundTask)
    QML_UNCREATABLE("a part of the view models")
};

struct ForeignPutBackModel {
    Q_GADGET
    QML_FOREIGN(PutBackModel)
    QML_NAMED_ELEMENT(PutBackModel)
    QML_UNCREATABLE("a part of the view models")
};

struct ForeignScanViewModel {
    Q_GADGET
    QML_FOREIGN(ScanViewModel)
    QML_NAMED_ELEMENT(ScanViewModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignScanItemsModel {
    Q_GADGET
    QML_FOREIGN(ScanItemsModel)
    QML_NAMED_ELEMENT(ScanItemsModel)
    QML_UNCREATABLE("a part of ScanViewModel")
};

struct ForeignStartupViewModel {
    Q_GADGET
    QML_FOREIGN(StartupViewModel)
    QML_NAMED_ELEMENT(StartupViewModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignStartupItemsModel {
    Q_GADGET
    QML_FOREIGN(StartupItemsModel)
    QML_NAMED_ELEMENT(StartupItemsModel)
    QML_UNCREATABLE("a part of StartupViewModel")
};

struct ForeignDuplicatePhotosViewModel {
    Q_GADGET
    QML_FOREIGN(DuplicatePhotosViewModel)
    QML_NAMED_ELEMENT(DuplicatePhotosViewModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignDuplicateGroupsModel {
    Q_GADGET
    QML_FOREIGN(DuplicateGroupsModel)
    QML_NAMED_ELEMENT(DuplicateGroupsModel)
    QML_UNCREATABLE("a part of DuplicatePhotosViewModel")
};

struct ForeignHistoryModel {
    Q_GADGET
    QML_FOREIGN(HistoryModel)
    QML_NAMED_ELEMENT(HistoryModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignOnboardingModel {
    Q_GADGET
    QML_FOREIGN(OnboardingModel)
    QML_NAMED_ELEMENT(OnboardingModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignStorageEntriesModel {
    Q_GADGET
    QML_FOREIGN(StorageEntriesModel)
    QML_NAMED_ELEMENT(StorageEntriesModel)
    QML_UNCREATABLE("a part of ScanViewModel")
};

struct ForeignTypeAhead {
    Q_GADGET
    QML_FOREIGN(TypeAhead)
    QML_NAMED_ELEMENT(TypeAhead)
};

struct ForeignUninstallViewModel {
    Q_GADGET
    QML_FOREIGN(UninstallViewModel)
    QML_NAMED_ELEMENT(UninstallViewModel)
    QML_UNCREATABLE("ScreenModels makes them")
};

struct ForeignInstalledAppsModel {
    Q_GADGET
    QML_FOREIGN(InstalledAppsModel)
    QML_NAMED_ELEMENT(InstalledAppsModel)
    QML_UNCREATABLE("a part of UninstallViewModel")
};

struct ForeignDiskChoiceModel {
    Q_GADGET
    QML_FOREIGN(DiskChoiceModel)
    QML_NAMED_ELEMENT(DiskChoiceModel)
    QML_UNCREATABLE("DiskWindow makes it")
};
