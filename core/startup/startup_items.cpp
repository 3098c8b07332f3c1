#include "core/startup/startup_items.h"

#include "core/removal/deletion.h"
#include "core/removal/put_back.h"
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

namespace {

/// Returns launchctl's name for the agents of this process's user.
std::string userDomain() {
    return "gui/" + std::to_string(platform::userId());
}

/// Loads the agent with this property list. Returns false if launchctl could not load it.
bool load(const std::string& propertyList, const Launchctl& launchctl) {
    return launchctl({"bootstrap", userDomain(), propertyList}) == 0;
}

} // namespace

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

platform::Result<DisabledItem> disable(const StartupItem& item, const platform::Disk& disk) {
    return disable(item, disk, runLaunchctl);
}

platform::Result<bool> enable(const DisabledItem& item, const platform::Disk& disk) {
    return enable(item, disk, runLaunchctl);
}

platform::Result<DisabledItem> disable(const StartupItem& item, const platform::Disk& disk,
                                       const Launchctl& launchctl) {
    if (item.isSystemWide)
        return platform::posixError(EPERM);
    DisabledItem disabled;
    // A failure is ignored: unloading an agent that is not loaded fails.
    if (disk.isOfThisMachine())
        disabled.wasUnloaded = launchctl({"bootout", userDomain() + "/" + item.label}) == 0;
    DeletionOutcome outcome = LumvaleScanner::deletePaths({item.path}, disk);
    if (!outcome.failed.empty()) {
        if (disabled.wasUnloaded)
            load(item.path, launchctl);
        return outcome.failed.front().error;
    }
    if (!outcome.moved.empty())
        disabled.propertyList = std::move(outcome.moved.front());
    return disabled;
}

platform::Result<bool> enable(const DisabledItem& item, const platform::Disk& disk,
                              const Launchctl& launchctl) {
    if (!item.propertyList)
        return platform::posixError(ENOENT);
    const PutBackOutcome outcome = LumvaleScanner::putBack({*item.propertyList}, disk);
    if (!outcome.failed.empty())
        return outcome.failed.front().error;
    return !item.wasUnloaded || load(item.propertyList->path, launchctl);
}

} // namespace core::LumvaleStartupItems
