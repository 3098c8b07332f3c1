#pragma once

#include <QString>

/// Where QSettings stores the settings: by default in the user's preferences, as this system keeps them.
namespace Settings {

/// Stores them as an INI file below this folder instead, so that the user's preferences are neither read nor
/// changed. Applies to every QSettings that is created afterwards.
void useFolder(const QString& folder);

/// Calls useFolder() with the value of the environment variable LUMVALE_SETTINGS, if it isn't empty.
void useFolderOfEnvironment();

} // namespace Settings
