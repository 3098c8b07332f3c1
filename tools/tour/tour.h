#pragma once

#include "app/i18n/app_language.h"
#include "platform/files/disk.h"

#include <QDir>

#include <optional>

/// Drives the program through all of its states with mouse clicks, on one disk, and saves pictures of each;
/// see Camera. Ends the program with an error message if something unexpected happens. Requires a
/// QGuiApplication and OwnSettings.
class Tour {
public:
    /// Without a folder no picture is saved.
    Tour(const platform::Disk& disk, std::optional<QDir> pictures);

    /// Visits everything in this language. Returns the texts that are cut or overlap, a line for each.
    QStringList run(AppLanguage language);

private:
    platform::Disk m_disk;
    std::optional<QDir> m_pictures;
};
