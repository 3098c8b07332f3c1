#pragma once

#include "core/startup/startup_item.h"
#include "core/uninstall/installed_app.h"
#include "platform/files/disk.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace core::LumvaleStartupItems {

/// The agents whose lists lie in `folder`, in the order of the lists' names. Those whose label, in lower
/// case, is among `seenLabels` are left out, and the labels of the others join it.
std::vector<StartupItem> scanFolder(const platform::Disk& disk, const std::string& folder, bool isSystemWide,
                                    const std::vector<InstalledApp>& installedApps,
                                    std::set<std::string>& seenLabels);

/// The name of the first application whose identifier the label begins with; else the label's last piece, as
/// words; else the label.
std::string friendlyName(std::string_view label, const std::vector<InstalledApp>& installedApps);

/// Runs the system's tool for agents and gives its exit status, -1 when it could not be started.
int runLaunchctl(const std::vector<std::string>& arguments);

} // namespace core::LumvaleStartupItems
