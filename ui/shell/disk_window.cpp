#include "ui/shell/disk_window.h"

#include "ui/shell/close_filter.h"
#include "ui/shell/input_filter.h"
#include "ui/shell/qml_modules.h"

#include <QQuickWindow>

#include <utility>

DiskWindow::DiskWindow(std::vector<platform::MacDisk> disks, const std::optional<std::string>& sample,
                       std::function<void(const platform::Disk&)> chosen)
    : m_choices(std::move(disks), sample) {
    QObject::connect(&m_choices, &DiskChoiceModel::chosen, &m_choices, std::move(chosen));
    m_engine.setInitialProperties({{QStringLiteral("choices"), QVariant::fromValue(&m_choices)}});
    QmlModules::load(m_engine, QStringLiteral("DiskWindow"));
    if (window()) {
        new InputFilter(window());
        new CloseFilter(window());
    }
}

QQuickWindow* DiskWindow::window() const {
    return QmlModules::window(m_engine);
}
