#pragma once

#include <QString>

class QQmlApplicationEngine;
class QQuickWindow;

/// The QML modules of the screens.
namespace QmlModules {

/// Sets the application's font and loads a window, the file ui/shell/`name`.qml.
void load(QQmlApplicationEngine& engine, const QString& name);

/// Returns the window that was loaded; null if that failed.
QQuickWindow* window(const QQmlApplicationEngine& engine);

} // namespace QmlModules
