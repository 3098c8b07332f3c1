#include "ui/shell/file_manager.h"

#include "platform/files/path.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QStringList>
#include <QUrl>

using namespace Qt::StringLiterals;

namespace {

/// Returns the file URI of a path. All bytes but ASCII letters, digits, "-._~" and "/" are percent-encoded
/// (RFC 3986), so that names that aren't UTF-8 are kept.
QByteArray fileUri(std::string_view path) {
    return "file://" + QByteArray(path.data(), static_cast<qsizetype>(path.size())).toPercentEncoding("/");
}

bool openFolderOf(std::string_view path) {
    return QDesktopServices::openUrl(QUrl::fromEncoded(fileUri(platform::parent(path))));
}

} // namespace

QString FileManager::showKey() {
    return u"show_in_file_manager"_s;
}

void FileManager::show(const std::string& hostPath, const std::function<void(bool)>& finished) {
    const QDBusConnection session = QDBusConnection::sessionBus();
    if (!session.isConnected()) {
        finished(openFolderOf(hostPath));
        return;
    }
    // The interface of freedesktop.org for file managers.
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, u"ShowItems"_s);
    call << QStringList(QString::fromLatin1(fileUri(hostPath))) << QString(); // no startup notification
    auto* watcher = new QDBusPendingCallWatcher(session.asyncCall(call));
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, hostPath, finished] {
        finished(!watcher->isError() || openFolderOf(hostPath));
        watcher->deleteLater();
    });
}
