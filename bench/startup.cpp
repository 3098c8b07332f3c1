#include "core/startup/launch_agents.h"
#include "core/startup/startup_items.h"
#include "core/uninstall/installed_apps.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <vector>

// Compares the scan of startup items with one that lists the applications with their sizes again for each of
// the two folders.

namespace {

std::size_t sizingScan(const platform::Disk& disk) {
    std::set<std::string> seenLabels;
    std::size_t count = 0;
    for (const bool isSystemWide : {false, true}) {
        const std::string folder =
            isSystemWide ? "/Library/LaunchAgents" : disk.inHome("Library/LaunchAgents");
        const std::vector<core::InstalledApp> apps = core::LumvaleUninstaller::scanInstalledApps(disk);
        count += core::LumvaleStartupItems::scanFolder(disk, folder, isSystemWide, apps, seenLabels).size();
    }
    return count;
}

template <class Work>
double milliseconds(Work work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

int main(int argc, char** argv) {
    const int rounds = argc == 4 ? std::atoi(argv[3]) : 0;
    if (rounds <= 0) {
        std::fputs("usage: bench-startup DISK HOME ROUNDS\n", stderr);
        return 2;
    }
    const platform::Result<platform::Disk> disk = platform::Disk::open(argv[1], argv[2]);
    if (!disk) {
        std::fprintf(stderr, "%s: %s\n", argv[1], disk.error().description.c_str());
        return 2;
    }
    // The first calls aren't timed: they fill the system's cache.
    const std::size_t items = core::LumvaleStartupItems::scan(*disk).size();
    if (sizingScan(*disk) != items) {
        std::fputs("the two don't find the same\n", stderr);
        return 1;
    }
    std::vector<double> ours;
    std::vector<double> sizing;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(milliseconds([&] { core::LumvaleStartupItems::scan(*disk); }));
        sizing.push_back(milliseconds([&] { sizingScan(*disk); }));
    }
    std::printf("%zu items, warm, medians of %d interleaved rounds\n\n", items, rounds);
    std::printf("| scan of startup items | ms | ratio |\n|---|---:|---:|\n");
    std::printf("| by names alone | %.1f | 1.0 |\n", median(ours));
    std::printf("| sizing every bundle twice | %.1f | %.1f |\n", median(sizing),
                median(sizing) / median(ours));
}
