#include "core/uninstall/installed_apps.h"

#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/property_lists/property_list.h"
#include "platform/text/text.h"
#include "platform/walk/walk.h"

#include <algorithm>
#include <array>

namespace core::LumvaleUninstaller {

namespace {

/// Applications of the system, and this program.
constexpr std::array<std::string_view, 12> excludedBundles{
    "Safari.app",   "Finder.app", "System Settings.app", "App Store.app", "Mail.app",  "Messages.app",
    "FaceTime.app", "Photos.app", "Music.app",           "Terminal.app",  "Xcode.app", "Lumvale.app",
};

bool isListed(std::string_view path) {
    const std::string_view name = platform::lastComponent(path);
    return platform::extension(name) == "app"
           && std::find(excludedBundles.begin(), excludedBundles.end(), name) == excludedBundles.end()
           && !path.starts_with("/System/");
}

InstalledApp readApp(const platform::Disk& disk, std::string path, platform::Progress* progress) {
    std::string name(platform::stem(path));
    std::optional<std::string> identifier;
    const auto information =
        platform::PropertyList::read(disk, platform::joined(path, "Contents/Info.plist"));
    if (information) {
        identifier = information->string("CFBundleIdentifier");
        if (auto displayName = information->string("CFBundleDisplayName"))
            name = std::move(*displayName);
        else if (auto bundleName = information->string("CFBundleName"))
            name = std::move(*bundleName);
    } else if (progress && platform::isDescriptorShortage(information.error())) {
        progress->addUnreadFolders(1);
    }
    return InstalledApp(std::move(name), std::move(identifier), std::move(path), 0);
}

} // namespace

std::vector<InstalledApp> discoverApps(const platform::Disk& disk, platform::Progress* progress) {
    std::vector<InstalledApp> apps;
    for (const std::string& root : {std::string("/Applications"), disk.inHome("Applications")}) {
        const auto names = platform::listFolder(disk, root, platform::Hidden::include, progress);
        if (!names)
            continue;
        for (const std::string& name : *names) {
            if (isStopped(progress))
                return apps;
            if (std::string path = platform::joined(root, name); isListed(path))
                apps.push_back(readApp(disk, std::move(path), progress));
        }
    }
    const platform::NameOrder order;
    std::stable_sort(apps.begin(), apps.end(), [&](const InstalledApp& a, const InstalledApp& b) {
        return order.before(a.name, b.name);
    });
    return apps;
}

std::vector<InstalledApp> scanInstalledApps(const platform::Disk& disk, platform::Progress* progress) {
    std::vector<InstalledApp> apps = discoverApps(disk, progress);
    std::vector<std::string> paths;
    paths.reserve(apps.size());
    for (const InstalledApp& app : apps)
        paths.push_back(app.path);
    const std::vector<std::int64_t> sizes = platform::measure(disk, paths, progress);
    for (std::size_t i = 0; i < apps.size(); ++i)
        apps[i].sizeBytes = sizes[i];
    return apps;
}

std::vector<std::string> matchKeys(const InstalledApp& app) {
    constexpr std::size_t minIdentifierLength = 4;
    constexpr std::size_t minNameLength = 3;
    std::vector<std::string> keys;
    if (app.bundleIdentifier) {
        std::string key = platform::lowercased(*app.bundleIdentifier);
        if (platform::characterCount(key) >= minIdentifierLength)
            keys.push_back(std::move(key));
    }
    std::string key = platform::lowercased(app.name);
    std::erase(key, ' ');
    if (platform::characterCount(key) >= minNameLength)
        keys.push_back(std::move(key));
    return keys;
}

} // namespace core::LumvaleUninstaller
