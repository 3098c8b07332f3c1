#include "core/uninstall/related_files.h"

#include "core/items/candidate.h"
#include "core/uninstall/installed_apps.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace core::LumvaleUninstaller {

namespace {

/// A folder in which applications keep files.
struct Location {
    std::string_view folder;
    std::string_view explanation; ///< translation key
};

/// Relative to the home folder.
constexpr std::array<Location, 17> locationsInHome{{
    {"Library/Application Support", "exp_app_support"},
    {"Library/Caches", "exp_app_caches"},
    {"Library/Preferences", "exp_app_prefs"},
    {"Library/Preferences/ByHost", "exp_app_prefs_byhost"},
    {"Library/Logs", "exp_app_logs"},
    {"Library/Logs/DiagnosticReports", "exp_app_crash_reports"},
    {"Library/Saved Application State", "exp_app_saved_state"},
    {"Library/WebKit", "exp_app_webkit"},
    {"Library/Containers", "exp_app_containers"},
    {"Library/Group Containers", "exp_app_group_containers"},
    {"Library/HTTPStorages", "exp_app_httpstorages"},
    {"Library/Cookies", "exp_app_cookies"},
    {"Library/Application Scripts", "exp_app_scripts"},
    {"Library/Autosave Information", "exp_app_autosave"},
    {"Library/PreferencePanes", "exp_app_prefpane_user"},
    {"Library/Services", "exp_app_services"},
    {"Library/LaunchAgents", "exp_app_launchagents_user"},
}};

/// Shared by all users.
constexpr std::array<Location, 4> sharedLocations{{
    {"/Library/Application Support", "exp_app_support_system"},
    {"/Library/LaunchAgents", "exp_app_launchagents_system"},
    {"/Library/LaunchDaemons", "exp_app_launchdaemons"},
    {"/Library/PreferencePanes", "exp_app_prefpane_system"},
}};

/// Returns the match keys without those that contain U+FFFD, which would match any invalid UTF-8.
std::vector<std::string> validMatchKeys(const InstalledApp& app) {
    std::vector<std::string> keys = matchKeys(app);
    std::erase_if(keys, [](const std::string& key) { return key.find("\uFFFD") != std::string::npos; });
    return keys;
}

bool containsAny(std::string_view name, const std::vector<std::string>& keys) {
    const std::string lowerCase = platform::lowercased(name);
    return std::any_of(keys.begin(), keys.end(),
                       [&](const std::string& key) { return lowerCase.find(key) != std::string::npos; });
}

/// Returns the length of the shortest part at the beginning of `name` whose lower case has at least this
/// length: the two lengths differ for some letters.
std::size_t lengthInName(std::string_view name, std::size_t lowerCaseLength) {
    const auto continues = [](char byte) {
        return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
    };
    std::size_t length = 0;
    while (length < name.size() && platform::lowercased(name.substr(0, length)).size() < lowerCaseLength) {
        do
            ++length;
        while (length < name.size() && continues(name[length]));
    }
    return length;
}

} // namespace

std::optional<NameMatch> matchInName(const InstalledApp& app, std::string_view name) {
    const std::string lowerCase = platform::lowercased(name);
    for (const std::string& key : validMatchKeys(app)) {
        const std::size_t found = lowerCase.find(key);
        if (found == std::string::npos)
            continue;
        const std::size_t offset = lengthInName(name, found);
        return NameMatch{offset, lengthInName(name, found + key.size()) - offset};
    }
    return std::nullopt;
}

std::optional<std::string> darwinUserCacheDirectory(const platform::Disk& disk) {
    const std::optional<std::string>& folder = disk.userCache();
    return folder && platform::isBelow(*folder, "/private/var/folders") ? folder : std::nullopt;
}

std::vector<ScanItem> relatedFiles(const InstalledApp& app, const platform::Disk& disk,
                                   platform::Progress* progress) {
    const std::vector<std::string> keys = validMatchKeys(app);
    if (keys.empty())
        return {};
    std::vector<Candidate> candidates;
    const auto search = [&](const std::string& folder, std::string_view explanation) {
        const auto names = platform::listFolder(disk, folder);
        if (!names)
            return;
        for (const std::string& name : *names) {
            if (isStopped(progress))
                return;
            if (containsAny(name, keys))
                candidates.push_back(
                    {platform::joined(folder, name), ScanCategory::appLeftovers, explanation, true});
        }
    };
    for (const auto& [folder, explanation] : locationsInHome)
        search(disk.inHome(folder), explanation);
    for (const auto& [folder, explanation] : sharedLocations)
        search(std::string(folder), explanation);
    if (const std::optional<std::string> folder = darwinUserCacheDirectory(disk))
        search(*folder, "exp_app_darwin_cache");
    return measureCandidates(disk, candidates, ZeroSize::keep, progress);
}

} // namespace core::LumvaleUninstaller
