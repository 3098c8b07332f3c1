#pragma once

#include "core/startup/startup_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace core::LumvaleStartupItems {

/// Returns the agents whose property lists are in `folder`, in the order of the file names. Skips agents of
/// the system and labels that are in `seenLabels`, which holds them in lower case; adds the labels of the
/// agents returned to `seenLabels`.
std::vector<StartupItem> scanFolder(const platform::Disk& disk, const std::string& folder, bool isSystemWide,
                                    const std::vector<InstalledApp>& installedApps,
                                    std::set<std::string>& seenLabels);

/// Returns the name of the first application whose bundle identifier is a prefix of the label, ignoring case;
/// otherwise the label's last component, capitalized and with spaces for "-" and "_"; otherwise the label.
std::string friendlyName(std::string_view label, const std::vector<InstalledApp>& installedApps);

/// Runs launchctl and returns its exit status; -1 if it could not be started. Blocks.
int runLaunchctl(const std::vector<std::string>& arguments);

} // namespace core::LumvaleStartupItems
