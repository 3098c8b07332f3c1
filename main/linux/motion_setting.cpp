#include "main/motion_setting.h"

#include "ui/style/reduced_motion.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusVariant>
#include <QGuiApplication>

namespace {

// Interface org.freedesktop.portal.Settings of xdg-desktop-portal.
const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString settings = QStringLiteral("org.gnome.desktop.interface");
const QString animations = QStringLiteral("enable-animations");

/// Receives the desktop's answer and its changes.
class Receiver : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    void take(QVariant value) {
        while (value.canConvert<QDBusVariant>()) // nested in a reply
            value = value.value<QDBusVariant>().variant();
        if (value.typeId() == QMetaType::Bool)
            ReducedMotion::shared().setRequested(!value.toBool());
    }

public Q_SLOTS:
    // The whole message: connecting a slot with a QDBusVariant fails in Qt 6.4 unless that type is
    // registered.
    void takeChange(const QDBusMessage& change) {
        const QVariantList arguments = change.arguments();
        if (arguments.size() == 3 && arguments[0] == settings && arguments[1] == animations)
            take(arguments[2]);
    }
};

} // namespace

void MotionSetting::follow() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    auto* const receiver = new Receiver(qGuiApp);
    // From any service: for a named one Qt would wait for the bus.
    bus.connect(QString(), path, interface, QStringLiteral("SettingChanged"), receiver,
                SLOT(takeChange(QDBusMessage)));
    QDBusMessage read = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    read << settings << animations;
    auto* const call = new QDBusPendingCallWatcher(bus.asyncCall(read), receiver);
    QObject::connect(call, &QDBusPendingCallWatcher::finished, receiver, [receiver, call] {
        receiver->take(call->reply().arguments().value(0)); // an error's text is ignored
        call->deleteLater();
    });
}

#include "motion_setting.moc"
