#include "core/startup/launch_agents.h"

#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/property_lists/property_list.h"
#include "platform/system/process.h"
#include "platform/text/text.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace core::LumvaleStartupItems {

namespace {

/// Returns the last component between dots that is not empty; empty if there is none.
std::string lastComponent(std::string_view label) {
    const std::size_t end = label.find_last_not_of('.') + 1; // 0 when there are only dots
    label = label.substr(0, end);
    return std::string(label.substr(label.rfind('.') + 1));
}

/// Returns the first application whose bundle identifier is a prefix of the label, ignoring case; or null.
const InstalledApp* applicationOf(std::string_view label, const std::vector<InstalledApp>& installedApps) {
    constexpr std::size_t minIdentifierLength = 4;
    const std::string lowerLabel = platform::lowercased(label);
    for (const InstalledApp& app : installedApps) {
        if (!app.bundleIdentifier)
            continue;
        const std::string identifier = platform::lowercased(*app.bundleIdentifier);
        if (lowerLabel.starts_with(identifier) && platform::characterCount(identifier) >= minIdentifierLength)
            return &app;
    }
    return nullptr;
}

/// Returns the outermost bundle of an application that contains the agent's program.
std::optional<std::string> bundleOfProgram(const platform::PropertyList& agent) {
    constexpr std::string_view bundleEnd = ".app/";
    std::optional<std::string> program = agent.string("Program");
    if (!program)
        program = agent.firstString("ProgramArguments");
    const std::size_t end =
        program && program->starts_with('/') ? program->find(bundleEnd) : std::string::npos;
    if (end == std::string::npos)
        return std::nullopt;
    return program->substr(0, end + bundleEnd.size() - 1);
}

} // namespace

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
        items.back().bundle = bundleOfProgram(*list);
        if (const InstalledApp* app = applicationOf(items.back().label, installedApps);
            app && !items.back().bundle)
            items.back().bundle = app->path;
    }
    return items;
}

std::string friendlyName(std::string_view label, const std::vector<InstalledApp>& installedApps) {
    constexpr std::size_t minComponentLength = 2;
    if (const InstalledApp* app = applicationOf(label, installedApps))
        return app->name;
    std::string component = lastComponent(label);
    if (platform::characterCount(component) < minComponentLength)
        return std::string(label);
    std::replace(component.begin(), component.end(), '-', ' ');
    std::replace(component.begin(), component.end(), '_', ' ');
    return platform::capitalized(component);
}

int runLaunchctl(const std::vector<std::string>& arguments) {
    return platform::runProgram("/bin/launchctl", arguments);
}

} // namespace core::LumvaleStartupItems
