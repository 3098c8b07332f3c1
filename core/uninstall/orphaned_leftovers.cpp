#include "core/uninstall/orphaned_leftovers.h"

#include "core/uninstall/installed_apps.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <set>

namespace core::LumvaleUninstaller {

namespace {

/// Folders of the home in which applications name their files after their identifiers.
constexpr std::array<std::string_view, 8> searchedFolders{
    "Library/Application Support", "Library/Preferences",         "Library/Saved Application State",
    "Library/Containers",          "Library/Group Containers",    "Library/WebKit",
    "Library/HTTPStorages",        "Library/Application Scripts",
};

bool isIdentifierCharacter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
}

bool isAppleIdentifier(std::string_view lowerCaseName) {
    return lowerCaseName.starts_with("com.apple.") || lowerCaseName.starts_with("group.com.apple.");
}

std::set<std::string> installedKeys(const platform::Disk& disk, platform::Progress& progress) {
    std::set<std::string> keys;
    for (const InstalledApp& app : discoverApps(disk, &progress)) {
        for (std::string& key : matchKeys(app))
            keys.insert(std::move(key));
    }
    return keys;
}

/// Returns whether a name looks like an application identifier that contains none of the keys.
bool isOrphan(std::string_view name, const std::set<std::string>& keys) {
    const std::string_view stem = platform::stem(name);
    if (!looksLikeAppIdentifier(stem))
        return false;
    const std::string lowerCase = platform::lowercased(stem);
    // Also the whole name: stem() removes the last component of a folder's name.
    if (isAppleIdentifier(lowerCase) || isAppleIdentifier(platform::lowercased(name)))
        return false;
    return std::none_of(keys.begin(), keys.end(),
                        [&](const std::string& key) { return lowerCase.find(key) != std::string::npos; });
}

} // namespace

bool looksLikeAppIdentifier(std::string_view stem) {
    constexpr int minComponents = 3;
    int components = 0;
    bool inComponent = false;
    for (const char c : stem) {
        if (c == '.') {
            inComponent = false;
        } else if (!isIdentifierCharacter(c)) {
            return false;
        } else if (!inComponent) {
            inComponent = true;
            ++components;
        }
    }
    return components >= minComponents;
}

std::vector<Candidate> orphanCandidates(const platform::Disk& disk, platform::Progress* progress) {
    platform::Progress discovery(progress);
    const std::set<std::string> keys = installedKeys(disk, discovery);
    if (discovery.unreadFolders() > 0) {
        // Files of an application that was not read would be taken for leftovers.
        if (progress)
            progress->addUnreadFolders(discovery.unreadFolders());
        return {};
    }
    std::vector<Candidate> candidates;
    for (const std::string_view folder : searchedFolders) {
        const std::string path = disk.inHome(folder);
        const auto names = platform::listFolder(disk, path, platform::Hidden::include, progress);
        if (!names)
            continue;
        for (const std::string& name : *names) {
            if (isStopped(progress))
                return candidates;
            if (isOrphan(name, keys))
                candidates.push_back({platform::joined(path, name), ScanCategory::orphanLeftovers,
                                      "exp_orphan_leftover", false});
        }
    }
    return candidates;
}

std::vector<ScanItem> orphanedLeftovers(const platform::Disk& disk) {
    return measureCandidates(disk, orphanCandidates(disk));
}

} // namespace core::LumvaleUninstaller
