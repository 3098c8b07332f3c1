#include "core/treemap/treemap.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <random>

// Times the layout of a treemap with this many tiles. Prints the median and the 99th percentile in
// microseconds; the maximum depends on the system's scheduling.

int main(int argc, char** argv) {
    std::size_t count = 0;
    if (argc == 2)
        std::from_chars(argv[1], argv[1] + std::strlen(argv[1]), count);
    if (count == 0) {
        std::fputs("usage: bench-layout TILES\n", stderr);
        return 2;
    }
    // Sizes of folders, from ten megabytes to ten gigabytes, in no order.
    std::mt19937 random(1);
    std::uniform_real_distribution<double> magnitude(7, 10);
    std::vector<core::TreemapItem> items;
    for (std::size_t i = 0; i < count; ++i)
        items.push_back({i, std::pow(10, magnitude(random))});

    std::vector<double> times(2000);
    std::size_t tiles = 0;
    for (double& time : times) {
        const auto begin = std::chrono::steady_clock::now();
        tiles = core::Treemap::squarify(items, {0, 0, 432, 210}).size();
        time = std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count();
    }
    std::sort(times.begin(), times.end());
    std::printf("%zu items, %zu tiles: median %.1f, 99 %% below %.1f\n", count, tiles,
                times[times.size() / 2], times[times.size() * 99 / 100]);
}
