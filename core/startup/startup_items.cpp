#include "core/startup/startup_items.h"

#include "core/removal/deletion.h"
#include "core/startup/launch_agents.h"
#include "core/uninstall/installed_apps.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/property_lists/property_list.h"
#include "platform/system/process.h"
#include "platform/text/text.h"

#include <algorithm>
#include <cerrno>
#include <iterator>
#include <optional>
#include <utility>

namespace core::LumvaleStartupItems {

std::vector<StartupItem> scan(const platform::Disk& disk) {
    const std::vector<InstalledApp> apps = LumvaleUninstaller::discoverApps(disk);
    std::set<std::string> seenLabels;
    // The user's folder first: of two agents with the same label, only the user's can be disabled.
    std::vector<StartupItem> items =
        scanFolder(disk, disk.inHome("Library/LaunchAgents"), false, apps, seenLabels);
    std::vector<StartupItem> shared = scanFolder(disk, "/Library/LaunchAgents", true, apps, seenLabels);
    std::move(shared.begin(), shared.end(), std::back_inserter(items));
    const platform::NameOrder order;
    std::stable_sort(items.begin(), items.end(), [&](const StartupItem& a, const StartupItem& b) {
        return order.before(a.displayName, b.displayName);
    });
    return items;
}

platform::Result<void> disable(const StartupItem& item, const platform::Disk& disk) {
    return disable(item, disk, runLaunchctl);
}

platform::Result<void> disable(const StartupItem& item, const platform::Disk& disk,
                               const std::function<int(const std::vector<std::string>&)>& launchctl) {
    if (item.isSystemWide)
        return platform::posixError(EPERM);
    // The exit status is ignored: unloading an agent that is not loaded fails.
    if (disk.isOfThisMachine())
        launchctl({"bootout", "gui/" + std::to_string(platform::userId()) + "/" + item.label});
    const DeletionOutcome outcome = LumvaleScanner::deletePaths({item.path}, disk);
    return outcome.failed.empty() ? platform::Result<void>() : outcome.failed.front().error;
}

} // namespace core::LumvaleStartupItems
