#include "core/startup/startup_items.h"

#include "core/scan/scanner.h"
#include "core/startup/launch_agents.h"
#include "core/uninstall/leftovers.h"
#include "platform/folder.h"
#include "platform/path.h"
#include "platform/process.h"
#include "platform/property_list.h"
#include "platform/text.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace LumvaleStartupItems {

namespace {

/// The last piece between dots that isn't empty.
std::string lastPiece(std::string_view label) {
    const std::size_t end = label.find_last_not_of('.') + 1; // 0 when there are only dots
    label = label.substr(0, end);
    return std::string(label.substr(label.rfind('.') + 1));
}

} // namespace

std::vector<StartupItem> scan(const platform::Disk& disk) {
    const std::vector<InstalledApp> apps = LumvaleUninstaller::discoverApps(disk);
    std::set<std::string> seenLabels;
    // The user's own first: of two agents with one label it is the one that can be disabled.
    std::vector<StartupItem> items =
        scanFolder(disk, disk.inHome("Library/LaunchAgents"), false, apps, seenLabels);
    std::vector<StartupItem> everyones = scanFolder(disk, "/Library/LaunchAgents", true, apps, seenLabels);
    std::move(everyones.begin(), everyones.end(), std::back_inserter(items));
    const platform::NameOrder order;
    std::stable_sort(items.begin(), items.end(), [&](const StartupItem& a, const StartupItem& b) {
        return order.before(a.displayName, b.displayName);
    });
    return items;
}

std::vector<StartupItem> scanFolder(const platform::Disk& disk, const std::string& folder, bool isSystemWide,
                                    const std::vector<InstalledApp>& installedApps,
                                    std::set<std::string>& seenLabels) {
    std::vector<StartupItem> items;
    const auto names = platform::listFolder(disk, folder);
    if (!names)
        return items;
    for (const std::string& name : *names) {
        if (platform::lowercased(platform::extension(name)) != "plist")
            continue;
        std::string path = platform::joined(folder, name);
        const auto list = platform::PropertyList::read(disk, path);
        std::optional<std::string> label = list ? list->string("Label") : std::nullopt;
        if (!label || label->empty())
            continue;
        std::string lowerCase = platform::lowercased(*label);
        if (lowerCase.starts_with("com.apple.") || !seenLabels.insert(std::move(lowerCase)).second)
            continue;
        std::string displayName = friendlyName(*label, installedApps);
        items.push_back({std::move(path), *std::move(label), std::move(displayName),
                         isSystemWide ? "exp_startup_system" : "exp_startup_user", isSystemWide,
                         list->boolean("Disabled").value_or(false)});
    }
    return items;
}

std::string friendlyName(std::string_view label, const std::vector<InstalledApp>& installedApps) {
    constexpr std::size_t shortestIdentifier = 4;
    constexpr std::size_t shortestPiece = 2;
    const std::string lowerLabel = platform::lowercased(label);
    for (const InstalledApp& app : installedApps) {
        if (!app.bundleIdentifier)
            continue;
        const std::string identifier = platform::lowercased(*app.bundleIdentifier);
        if (lowerLabel.starts_with(identifier) && platform::characterCount(identifier) >= shortestIdentifier)
            return app.name;
    }
    std::string piece = lastPiece(label);
    if (platform::characterCount(piece) < shortestPiece)
        return std::string(label);
    std::replace(piece.begin(), piece.end(), '-', ' ');
    std::replace(piece.begin(), piece.end(), '_', ' ');
    return platform::capitalized(piece);
}

int runLaunchctl(const std::vector<std::string>& arguments) {
    return platform::runProgram("/bin/launchctl", arguments);
}

bool disable(const StartupItem& item, const platform::Disk& disk) {
    return disable(item, disk, runLaunchctl);
}

bool disable(const StartupItem& item, const platform::Disk& disk,
             const std::function<int(const std::vector<std::string>&)>& launchctl) {
    if (item.isSystemWide)
        return false;
    // An agent that wasn't loaded can't be unloaded, and is disabled all the same: the status says nothing.
    if (disk.isOfThisMachine())
        launchctl({"bootout", "gui/" + std::to_string(platform::userId()) + "/" + item.label});
    const std::vector<std::string> moved = LumvaleScanner::deletePaths({item.path}, disk).succeeded;
    return std::find(moved.begin(), moved.end(), item.path) != moved.end();
}

} // namespace LumvaleStartupItems
