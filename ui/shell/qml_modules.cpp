#include "ui/shell/qml_modules.h"

#include "ui/style/typeface.h"

#include <QQmlApplicationEngine>
#include <QQuickWindow>

// Referenced in load(): otherwise the linker drops these functions of the static libraries, and with them the
// registration of the QML types.
void qml_register_types_Lumvale();
void qml_register_types_Lumvale_Style();

void QmlModules::load(QQmlApplicationEngine& engine, const QString& name) {
    [[maybe_unused]] void (*volatile const registrations[])() = {qml_register_types_Lumvale,
                                                                 qml_register_types_Lumvale_Style};
    Typeface::setApplicationFont();
    engine.addImportPath(QStringLiteral("qrc:/qml"));
    engine.load(QUrl(QStringLiteral("qrc:/qml/Lumvale/shell/%1.qml").arg(name)));
}

QQuickWindow* QmlModules::window(const QQmlApplicationEngine& engine) {
    return engine.rootObjects().isEmpty() ? nullptr
                                          : qobject_cast<QQuickWindow*>(engine.rootObjects().constFirst());
}
