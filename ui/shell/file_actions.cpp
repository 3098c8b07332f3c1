#include "ui/shell/file_actions.h"

#include "app/i18n/localizer.h"
#include "app/text/display.h"
#include "platform/files/path.h"
#include "ui/shell/file_manager.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPointer>

#include <cerrno>
#include <utility>

using namespace Qt::StringLiterals;

FileActions::FileActions(platform::Disk disk, QQmlEngine* engine) : QObject(engine), m_disk(std::move(disk)) {
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
}

FileActions* FileActions::create(QQmlEngine* engine, QJSEngine*) {
    return engine->findChild<FileActions*>({}, Qt::FindDirectChildrenOnly);
}

QString FileActions::showKey() const {
    return FileManager::showKey();
}

QString FileActions::text(const QByteArray& path) const {
    return display::text(path.toStdString());
}

void FileActions::show(const QByteArray& path) {
    const std::string ofDisk = path.toStdString();
    const QString name = display::name(platform::lastComponent(ofDisk));
    const platform::Result<std::string> ofHost = m_disk.hostPath(ofDisk);
    if (!ofHost) {
        const bool isGone = ofHost.error().code == ENOENT || ofHost.error().code == ENOTDIR;
        Q_EMIT reported(::tr(isGone ? u"show_gone"_s : u"show_unreachable"_s).arg(name));
        return;
    }
    FileManager::show(*ofHost, [self = QPointer(this), name](bool isShown) {
        if (self && !isShown)
            Q_EMIT self->reported(::tr(u"show_failed"_s).arg(name));
    });
}

void FileActions::copy(const QByteArray& path) {
    QGuiApplication::clipboard()->setText(text(path));
    Q_EMIT reported(::tr(u"path_copied"_s));
}
