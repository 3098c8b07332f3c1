#include "app/settings.h"

#include <QSettings>

void Settings::useFolder(const QString& folder) {
    // INI is the only format of QSettings whose path can be set on every system.
    QSettings::setDefaultFormat(QSettings::IniFormat);
    for (const QSettings::Scope scope : {QSettings::UserScope, QSettings::SystemScope})
        QSettings::setPath(QSettings::IniFormat, scope, folder);
}

void Settings::useFolderOfEnvironment() {
    if (const QString folder = qEnvironmentVariable("LUMVALE_SETTINGS"); !folder.isEmpty())
        useFolder(folder);
}
