#include "platform/photos/photo_library.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

/// A disk in memory, where the machine has such a place, with a folder for the catalogue; gone at the end.
struct Root {
    Root() {
        const bool isInMemory = std::filesystem::is_directory("/dev/shm");
        path = (isInMemory ? "/dev/shm" : std::filesystem::temp_directory_path()) / "lumvale-fuzz-XXXXXX";
        if (mkdtemp(path.data()) == nullptr)
            std::abort();
        std::filesystem::create_directories(path + "/Pictures/Photos Library.photoslibrary/database");
    }
    ~Root() { std::filesystem::remove_all(path); }
    Root(const Root&) = delete;
    Root& operator=(const Root&) = delete;

    std::string path;
};

const std::string& root() {
    static const Root root;
    return root.path;
}

const platform::PhotoLibrary& library() {
    static const platform::PhotoLibrary library = [] {
        const auto authorized = [](const platform::Disk&) {
            return platform::PhotoAuthorization::authorized;
        };
        return platform::PhotoLibrary(*platform::Disk::open(root(), "/"), {authorized, authorized});
    }();
    return library;
}

} // namespace

/// Whatever bytes a catalogue holds, looking into it ends, and what it gives has a name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::ofstream(root() + "/Pictures/Photos Library.photoslibrary/database/Photos.sqlite", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    std::string first;
    (void)library().visitAssets([&] { first.clear(); },
                                [&](const platform::PhotoAsset& asset) {
                                    if (!asset.localIdentifier.ends_with("/L0/001"))
                                        std::abort();
                                    if (first.empty())
                                        first = asset.localIdentifier;
                                });
    (void)library().picture(first);
    return 0;
}
