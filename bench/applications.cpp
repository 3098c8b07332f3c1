
#include "core/uninstall/installed_apps.h"
#include "core/uninstall/related_files.h"
#include <chrono>
#include <cstdio>
#include <functional>

// Times the product's list of applications, by name only and with sizes, and the search for the files of
// each. Prints milliseconds measured within the process, since starting one takes longer than the fastest of
// these.

namespace {

double milliseconds(const std::function<void()>& work) {
    const auto started = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - started).count();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: bench-applications DISK HOME\n", stderr);
        return 2;
    }
    const platform::Result<platform::Disk> disk = platform::Disk::open(argv[1], argv[2]);
    if (!disk) {
        std::fprintf(stderr, "%s: %s\n", argv[1], disk.error().description.c_str());
        return 2;
    }
    // The first call, which isn't timed, fills the system's cache.
    const std::vector<core::InstalledApp> apps = core::LumvaleUninstaller::discoverApps(*disk);
    std::size_t files = 0;
    std::printf("names %.3f\n", milliseconds([&] { core::LumvaleUninstaller::discoverApps(*disk); }));
    std::printf("sizes %.3f\n", milliseconds([&] { core::LumvaleUninstaller::scanInstalledApps(*disk); }));
    std::printf("related %.3f\n", milliseconds([&] {
                    for (const core::InstalledApp& app : apps)
                        files += core::LumvaleUninstaller::relatedFiles(app, *disk).size();
                }));
    std::printf("applications %zu\nfiles %zu\n", apps.size(), files);
}
