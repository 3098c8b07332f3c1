#include "ui/shell/screen_models.h"

#include <utility>

ScreenModels::ScreenModels(platform::Disk disk, HistoryStore& history, platform::Executor executor,
                           platform::PhotoLibrary photos, QQmlEngine* engine)
    : QObject(engine),
      m_disk(std::move(disk)),
      m_history(history),
      m_executor(std::move(executor)),
      m_photos(std::move(photos)) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

ScreenModels* ScreenModels::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<ScreenModels*>({}, Qt::FindDirectChildrenOnly);
}

ScanViewModel* ScreenModels::cleanup(QObject* screen) const {
    return new ScanViewModel(m_disk, m_history, m_executor, screen);
}

UninstallViewModel* ScreenModels::uninstall(QObject* screen) const {
    return new UninstallViewModel(m_disk, m_history, m_executor, screen);
}

StartupViewModel* ScreenModels::startup(QObject* screen) const {
    return new StartupViewModel(m_disk, m_executor, screen);
}

DuplicatePhotosViewModel* ScreenModels::duplicates(QObject* screen) const {
    return new DuplicatePhotosViewModel(m_photos, m_history, m_executor, screen);
}

HistoryModel* ScreenModels::history(QObject* screen) const {
    return new HistoryModel(m_history, screen);
}

OnboardingModel* ScreenModels::onboarding(QObject* shell) const {
    return new OnboardingModel(m_disk, shell);
}
