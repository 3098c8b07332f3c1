#pragma once

#include "app/models/disk_choice_model.h"

#include <QQmlApplicationEngine>

#include <functional>

class QQuickWindow;

/// The window that asks which disk to open, before the main window exists. The constructor shows it; the
/// destructor destroys it. Interface thread only.
class DiskWindow {
public:
    /// `chosen` is called with each disk that the user opens.
    DiskWindow(std::vector<platform::MacDisk> disks, const std::optional<std::string>& sample,
               std::function<void(const platform::Disk&)> chosen);

    QQuickWindow* window() const; ///< null if loading the QML failed

private:
    DiskChoiceModel m_choices;
    QQmlApplicationEngine m_engine;
};
