#pragma once

#include <QString>

/// The folder of the settings that QSettings stores: by default the system's folder for preferences.
namespace Settings {

/// Stores them as an INI file below this folder instead, so that the user's preferences are neither read nor
/// changed. Applies to every QSettings that is created afterwards.
void useFolder(const QString& folder);

/// Calls useFolder() with the value of the environment variable LUMVALE_SETTINGS, if it isn't empty.
void useFolderOfEnvironment();

} // namespace Settings
