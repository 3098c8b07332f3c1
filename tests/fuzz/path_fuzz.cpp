#include "core/removal/deletion_guard.h"
#include "platform/files/path.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Names = std::vector<std::string>;

const platform::Disk& disk() {
    static const platform::Disk disk = [] {
        std::string root = (std::filesystem::temp_directory_path() / "lumvale-fuzz-XXXXXX").string();
        if (mkdtemp(root.data()) == nullptr)
            std::abort();
        std::filesystem::create_directories(root + "/Users/me");
        const auto opened = platform::Disk::open(root, "/Users/me");
        std::filesystem::remove_all(root); // the open folder is all that the guard's home needs
        if (!opened)
            std::abort();
        return *opened;
    }();
    return disk;
}

Names namesOf(const std::string& path) {
    Names names;
    for (std::size_t at = 1; at <= path.size();) {
        const std::size_t end = std::min(path.find('/', at), path.size());
        names.push_back(path.substr(at, end - at));
        at = end + 1;
    }
    return path == "/" ? Names{} : names;
}

bool isBelow(const Names& names, const Names& place) {
    return names.size() > place.size() && std::equal(place.begin(), place.end(), names.begin());
}

/// The guard's rules once more, by names instead of text: what a standardised path says of itself.
bool mayGo(const Names& names) {
    static const Names kept{"Documents", "Desktop", "Downloads",    "Pictures", "Movies",
                            "Music",     "Library", "Applications", "Public",   ".Trash"};
    if (isBelow(names, {"Users", "me"}))
        return names.size() > 3 || std::find(kept.begin(), kept.end(), names[2]) == kept.end();
    if (isBelow(names, {"Library"}))
        return names[1] != "Apple";
    return isBelow(names, {"Applications"}) || isBelow(names, {"tmp"}) || isBelow(names, {"private", "tmp"})
           || isBelow(names, {"private", "var", "folders"});
}

} // namespace

/// However a path is spelt, its standardised form is one, and the guard decides on it as the rules say.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string path(reinterpret_cast<const char*>(data), size);
    const std::string standard = platform::standardized(path);
    if (!path.starts_with('/')) {
        if (standard != path || core::LumvaleScanner::isDeletionAllowed(standard, disk()))
            std::abort();
        return 0;
    }
    const Names names = namesOf(standard);
    const bool isStandard = std::none_of(names.begin(), names.end(), [](const std::string& name) {
        return name.empty() || name == "." || name == "..";
    });
    if (!standard.starts_with('/') || !isStandard || platform::standardized(standard) != standard)
        std::abort();
    if (core::LumvaleScanner::isDeletionAllowed(standard, disk()) != mayGo(names))
        std::abort();
    return 0;
}
