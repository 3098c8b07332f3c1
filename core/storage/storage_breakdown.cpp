#include "core/storage/storage_breakdown.h"

#include "platform/files/attributes.h"
#include "platform/files/display_name.h"
#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/walk/walk.h"

#include <algorithm>

namespace core::LumvaleScanner {

std::vector<StorageEntry> storageBreakdown(const platform::Disk& disk, platform::Progress* progress) {
    std::vector<std::string> paths;
    if (const auto names = platform::listFolder(disk, disk.home(), platform::Hidden::skip, progress)) {
        for (const std::string& name : *names) {
            std::string path = disk.inHome(name);
            if (platform::kindOf(disk, path) == platform::Kind::folder)
                paths.push_back(std::move(path));
        }
    }
    paths.emplace_back("/Applications"); // must be last: its name below is not localized
    const std::vector<std::int64_t> sizes = platform::measure(disk, paths, progress);

    std::vector<StorageEntry> entries;
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (sizes[i] > 0)
            entries.emplace_back(i + 1 == paths.size() ? "Applications"
                                                       : platform::displayName(disk, paths[i]),
                                 paths[i], sizes[i]);
    }
    std::stable_sort(entries.begin(), entries.end(),
                     [](const StorageEntry& a, const StorageEntry& b) { return a.sizeBytes > b.sizeBytes; });
    return entries;
}

} // namespace core::LumvaleScanner
