#include "tools/sample_disk/target_folder.h"

#include "platform/files/descriptor.h"
#include "platform/system/mount_points.h"
#include "tools/sample_disk/immutable_flag.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>

namespace fs = std::filesystem;

namespace sample_disk {

namespace {

constexpr const char* markerName = ".lumvale-sample-disk";
constexpr std::string_view markerText = "This folder is a sample disk made by lumvale-sample-disk, which "
                                        "deletes all of it when it makes it anew.\n";

bool isMarker(const fs::path& file) {
    if (!fs::is_regular_file(fs::symlink_status(file)))
        return false;
    std::ifstream stream(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {}) == markerText;
}

bool containsMountPoint(const fs::path& folder) {
    const std::string below = fs::canonical(folder).string() + '/';
    const std::vector<platform::MountPoint> mounts = platform::mountPoints();
    return std::any_of(mounts.begin(), mounts.end(),
                       [&](const platform::MountPoint& mount) { return mount.folder.starts_with(below); });
}

std::vector<fs::path> children(const fs::path& folder) {
    std::vector<fs::path> paths;
    std::error_code ignored; // the removal reports what is wrong
    for (fs::directory_iterator child(folder, ignored), end; child != end; child.increment(ignored))
        paths.push_back(child->path());
    return paths;
}

void clearImmutableFlag(const fs::path& entry) {
    const platform::Descriptor file(open(entry.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    if (file)
        setImmutable(file.number(), false);
}

void makeRemovable(const fs::path& entry) {
    std::error_code ignored;
    clearImmutableFlag(entry);
    if (!fs::is_directory(fs::symlink_status(entry, ignored)))
        return;
    fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, ignored);
    clearImmutableFlag(entry); // an unreadable folder could not be opened before
    for (const fs::path& child : children(entry))
        makeRemovable(child);
}

} // namespace

std::optional<std::string> clearTargetFolder(const std::string& hostFolder) {
    const fs::path folder(hostFolder);
    const fs::path marker = folder / markerName;
    if (!fs::exists(folder))
        fs::create_directories(folder);
    else if (!fs::is_directory(folder))
        return hostFolder + " is not a folder.";
    else if (!fs::is_empty(folder) && !isMarker(marker))
        return hostFolder + " is not empty and was not made by this program: nothing was changed.";
    if (containsMountPoint(folder))
        return hostFolder + " has another volume mounted in it: nothing was changed.";
    // Written first and never removed, so that the next run recognizes the result of an interrupted one.
    if (!isMarker(marker) && !(std::ofstream(marker, std::ios::binary) << markerText << std::flush))
        throw std::system_error(errno, std::generic_category(), marker.string());
    for (const fs::path& entry : children(folder)) {
        if (entry == marker)
            continue;
        std::error_code error;
        fs::remove_all(entry, error);
        if (error) {
            makeRemovable(entry);
            fs::remove_all(entry);
        }
    }
    return std::nullopt;
}

} // namespace sample_disk
