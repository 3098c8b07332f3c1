#include "platform/walk/walk.h"

#include <charconv>
#include <cstdio>
#include <cstring>

// Prints the size in bytes of a folder, measured by the product's walk. The caller takes the time.

int main(int argc, char** argv) {
    unsigned workers = 0;
    if (argc == 3)
        std::from_chars(argv[2], argv[2] + std::strlen(argv[2]), workers);
    if (workers == 0) {
        std::fputs("usage: bench-walk FOLDER WORKERS\n", stderr);
        return 2;
    }
    const platform::Result<platform::Disk> disk = platform::Disk::open(argv[1], "/");
    if (!disk) {
        std::fprintf(stderr, "%s: %s\n", argv[1], disk.error().description.c_str());
        return 2;
    }
    const std::vector<std::string> paths{"/"};
    std::printf("%lld\n",
                static_cast<long long>(
                    platform::measure(*disk, paths, nullptr, platform::Hidden::skip, workers).front()));
}
