#include "core/treemap/treemap.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using core::Treemap::Rectangle;

double overlapOfRanges(double start, double length, double otherStart, double otherLength) {
    return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

/// Returns the extent of the common area of two rectangles along its shorter side; negative without one.
double overlap(const Rectangle& a, const Rectangle& b) {
    return std::min(overlapOfRanges(a.x, a.width, b.x, b.width),
                    overlapOfRanges(a.y, a.height, b.y, b.height));
}

std::vector<core::TreemapRect> squarify(const std::vector<double>& values, const Rectangle& in) {
    std::vector<core::TreemapItem> items;
    for (const double value : values)
        items.push_back({items.size(), value});
    return core::Treemap::squarify(items, in);
}

} // namespace

TEST(Treemap, TilesFillTheRectangleInProportionLargestFirstWithoutOverlap) {
    std::vector<double> uneven(200);
    for (std::size_t i = 0; i < uneven.size(); ++i)
        uneven[i] = std::pow(1.1, static_cast<double>(i * 77 % 100));
    const Rectangle rectangles[]{{0, 0, 4320, 2100}, {-7, 1e3, 900, 3000}, {0.5, 2, 3000, 3000}};
    for (const Rectangle& in : rectangles) {
        for (const std::vector<double>& values : {uneven, {6, 6, 4, 3, 2, 2, 1}, {1, 1, 1, 1}, {7}}) {
            const std::vector<core::TreemapRect> tiles = squarify(values, in);
            ASSERT_EQ(tiles.size(), values.size());
            const double scale = in.width * in.height / std::accumulate(values.begin(), values.end(), 0.0);
            for (std::size_t i = 0; i < tiles.size(); ++i) {
                const Rectangle& tile = tiles[i].rect;
                EXPECT_NEAR(tile.width * tile.height, values[tiles[i].id] * scale, 1e-3);
                EXPECT_NEAR(overlapOfRanges(tile.x, tile.width, in.x, in.width), tile.width, 1e-6);
                EXPECT_NEAR(overlapOfRanges(tile.y, tile.height, in.y, in.height), tile.height, 1e-6);
                for (std::size_t j = 0; j < i; ++j) {
                    EXPECT_LE(overlap(tile, tiles[j].rect), 1e-6) << i << " and " << j;
                    const double before = values[tiles[j].id];
                    const double value = values[tiles[i].id];
                    EXPECT_TRUE(before > value || (before == value && tiles[j].id < tiles[i].id));
                }
            }
        }
    }
    // The worked example of the paper that describes the algorithm.
    const Rectangle third = squarify({6, 6, 4, 3, 2, 2, 1}, {0, 0, 6, 4})[2].rect;
    EXPECT_NEAR(third.x, 3, 1e-9);
    EXPECT_NEAR(third.width, 12.0 / 7, 1e-9);
    EXPECT_NEAR(third.height, 7.0 / 3, 1e-9);
}

TEST(Treemap, OmitsItemsWithoutAreaAndHandlesInvalidInput) {
    const struct {
        const char* what;
        std::vector<double> values;
        Rectangle in;
        std::vector<std::size_t> tiles;
    } cases[]{{"strips thicker than half a unit", {99.4, 0.6}, {0, 0, 100, 1}, {0, 1}},
              {"a strip of half a unit", {0.5, 99.5}, {0, 0, 100, 1}, {1}},
              {"zeros beside a value", {0, 3, 0}, {0, 0, 3, 1}, {1}},
              {"only zeros", {0, 0}, {0, 0, 10, 10}, {}},
              {"a negative sum", {1, -1.5}, {0, 0, 10, 10}, {}},
              {"no width", {1}, {0, 0, 0, 10}, {}},
              {"not a number", {1, std::nan("")}, {0, 0, 10, 10}, {}},
              {"an infinite sum", {1e308, 1.5e308}, {0, 0, 4, 2}, {1, 0}}};
    for (const auto& [what, values, in, expected] : cases) {
        std::vector<std::size_t> found;
        for (const core::TreemapRect& tile : squarify(values, in)) {
            found.push_back(tile.id);
            EXPECT_FALSE(std::isnan(tile.rect.width + tile.rect.height)) << what;
        }
        EXPECT_EQ(found, expected) << what;
    }
}
