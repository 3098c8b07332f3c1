#include "tools/sample_disk/ground.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <linux/fs.h>
#include <mntent.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace SampleDisk {

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

void writeMarker(const fs::path& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << markerText << std::flush;
    if (!stream)
        throw std::system_error(errno, std::generic_category(), file.string());
}

void clearImmutableFlag(const fs::path& entry) {
    const int file = open(entry.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0)
        return;
    int flags = 0;
    if (ioctl(file, FS_IOC_GETFLAGS, &flags) == 0 && (flags & FS_IMMUTABLE_FL) != 0) {
        flags &= ~FS_IMMUTABLE_FL;
        ioctl(file, FS_IOC_SETFLAGS, &flags);
    }
    close(file);
}

void makeRemovable(const fs::path& entry) {
    std::error_code ignored; // the removal that follows says what still refuses
    clearImmutableFlag(entry);
    if (!fs::is_directory(fs::symlink_status(entry, ignored)))
        return;
    fs::permissions(entry, fs::perms::owner_all, fs::perm_options::add, ignored);
    clearImmutableFlag(entry); // once more, now that it can be opened
    std::vector<fs::path> children;
    for (fs::directory_iterator child(entry, ignored), end; !ignored && child != end;
         child.increment(ignored))
        children.push_back(child->path());
    for (const fs::path& child : children)
        makeRemovable(child);
}

bool holdsMount(const fs::path& folder) {
    const std::string below = fs::canonical(folder).string() + '/';
    std::FILE* table = setmntent("/proc/self/mounts", "r");
    if (table == nullptr)
        return false;
    bool found = false;
    while (const mntent* mount = getmntent(table))
        found = found || std::string_view(mount->mnt_dir).starts_with(below);
    endmntent(table);
    return found;
}

void removeAll(const fs::path& entry) {
    std::error_code error;
    fs::remove_all(entry, error);
    if (!error)
        return;
    makeRemovable(entry);
    fs::remove_all(entry);
}

} // namespace

std::optional<std::string> clearGround(const std::string& hostFolder) {
    const fs::path folder(hostFolder);
    const fs::path marker = folder / markerName;
    if (!fs::exists(folder)) {
        fs::create_directories(folder);
    } else if (!fs::is_directory(folder)) {
        return hostFolder + " is not a folder.";
    } else if (!fs::is_empty(folder) && !isMarker(marker)) {
        return hostFolder + " is not empty and was not made by this program: nothing was changed.";
    }
    if (holdsMount(folder))
        return hostFolder + " has another volume mounted in it: nothing was changed.";
    // The marker comes first and, of an earlier sample, stays to the end: a run cut short leaves a folder
    // that the next one still knows.
    if (!isMarker(marker))
        writeMarker(marker);
    std::vector<fs::path> entries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder))
        if (entry.path() != marker)
            entries.push_back(entry.path());
    for (const fs::path& entry : entries)
        removeAll(entry);
    return std::nullopt;
}

} // namespace SampleDisk
