#include "core/treemap/treemap.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace core::Treemap {

void PrintTo(const Rectangle& r, std::ostream* out) {
    *out << "(" << r.x << ", " << r.y << "; " << r.width << " x " << r.height << ")";
}

} // namespace core::Treemap

namespace {

using core::Treemap::Rectangle;

std::vector<core::TreemapItem> itemsOf(const std::vector<double>& values) {
    std::vector<core::TreemapItem> items;
    for (const double value : values)
        items.push_back({items.size(), value});
    return items;
}

double areaOf(const Rectangle& r) {
    return r.width * r.height;
}

/// How far the rectangles reach into each other, in the direction in which that is less.
double overlap(const Rectangle& a, const Rectangle& b) {
    return std::min(std::min(a.x + a.width, b.x + b.width) - std::max(a.x, b.x),
                    std::min(a.y + a.height, b.y + b.height) - std::max(a.y, b.y));
}

/// Tiles of their values' sizes, largest first, inside the rectangle and beside each other. What is left
/// empty is a strip too thin for a tile, and nothing when every item has one.
void expectMapOf(const std::vector<double>& values, const Rectangle& in) {
    constexpr double rounding = 1e-9;
    const double slack = rounding * (in.width + in.height);
    const std::vector<core::TreemapRect> tiles = core::Treemap::squarify(itemsOf(values), in);
    std::vector<core::TreemapItem> largestFirst = itemsOf(values);
    std::stable_sort(
        largestFirst.begin(), largestFirst.end(),
        [](const core::TreemapItem& a, const core::TreemapItem& b) { return a.value > b.value; });
    const double scale = areaOf(in) / std::accumulate(values.begin(), values.end(), 0.0);
    double laid = 0;
    ASSERT_LE(tiles.size(), values.size());
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        const Rectangle& tile = tiles[i].rect;
        ASSERT_EQ(tiles[i].id, largestFirst[i].id);
        ASSERT_NEAR(areaOf(tile), largestFirst[i].value * scale, rounding * areaOf(in));
        ASSERT_GE(std::min(tile.x - in.x, tile.y - in.y), -slack);
        ASSERT_LE(std::max(tile.x + tile.width - in.x - in.width, tile.y + tile.height - in.y - in.height),
                  slack);
        for (std::size_t j = 0; j < i; ++j)
            ASSERT_LE(overlap(tile, tiles[j].rect), slack) << i << " and " << j;
        laid += areaOf(tile);
    }
    const double strip = tiles.size() < values.size() ? 0.5 * std::max(in.width, in.height) : 0;
    ASSERT_NEAR(laid, areaOf(in), strip + rounding * areaOf(in));
}

TEST(Treemap, KeepsItsPromisesForAnyValuesInAnyRectangle) {
    std::mt19937 random(20000);
    const auto between = [&](double low, double high) {
        return std::uniform_real_distribution(low, high)(random);
    };
    const Rectangle rectangles[] = {{0, 0, 432, 210},    {0, 0, 300, 300},     {-7, 1e3, 0.75, 900},
                                    {0, 0, 12345, 0.51}, {0.1, 0.2, 0.6, 0.6}, {0, 0, 1e6, 3e5}};
    for (int round = 0; round < 300; ++round) {
        for (const Rectangle& in : rectangles) {
            // Of the same magnitude, across all of them, and with many that are equal.
            const double magnitudes = round % 3 == 0 ? 1 : 12;
            std::vector<double> values(static_cast<std::size_t>(std::pow(500, between(0, 1))));
            for (double& value : values)
                value = round % 3 == 2 ? std::floor(between(1, 9)) : std::pow(10, between(0, magnitudes));
            ASSERT_NO_FATAL_FAILURE(expectMapOf(values, in))
                << "round " << round << " in " << testing::PrintToString(in);
        }
    }
}

TEST(Treemap, LaysOutWhatWasReckonedByHand) {
    const double third = 1.0 / 3;
    const struct {
        const char* what;
        Rectangle in;
        std::vector<double> values;
        std::vector<core::TreemapRect> tiles;
    } rows[] = {
        {"one fills all, wherever it lies", {5, -3, 30, 20}, {7}, {{0, {5, -3, 30, 20}}}},
        {"a square space starts with a row at the top, which equal ratios join",
         {0, 0, 10, 10},
         {1, 1},
         {{0, {0, 0, 5, 10}}, {1, {5, 0, 5, 10}}}},
        {"a tall space as well", {0, 0, 10, 20}, {1, 1}, {{0, {0, 0, 10, 10}}, {1, {0, 10, 10, 10}}}},
        {"a wide space starts with a column on the left",
         {0, 0, 40, 10},
         {1, 1, 1, 1},
         {{0, {0, 0, 10, 10}}, {1, {10, 0, 10, 10}}, {2, {20, 0, 10, 10}}, {3, {30, 0, 10, 10}}}},
        {"the example that made the method known",
         {0, 0, 6, 4},
         {6, 6, 4, 3, 2, 2, 1},
         {{0, {0, 0, 3, 2}},
          {1, {0, 2, 3, 2}},
          {2, {3, 0, 12.0 / 7, 7 * third}},
          {3, {3 + 12.0 / 7, 0, 9.0 / 7, 7 * third}},
          {4, {3, 7 * third, 1.2, 5 * third}},
          {5, {4.2, 7 * third, 1.2, 5 * third}},
          {6, {5.4, 7 * third, 0.6, 5 * third}}}},
        {"a strip a little over half a unit is laid out",
         {0, 0, 100, 1},
         {99.4, 0.6},
         {{0, {0, 0, 99.4, 1}}, {1, {99.4, 0, 0.6, 1}}}},
        {"one of half a unit isn't", {0, 0, 100, 1}, {0.5, 99.5}, {{1, {0, 0, 99.5, 1}}}},
        {"nor is anything in a space that thin", {0, 0, 100, 0.5}, {1, 2}, {}},
        {"what has no size gets no tile beside what has", {0, 0, 3, 1}, {0, 3, 0}, {{1, {0, 0, 3, 1}}}},
        {"nothing", {0, 0, 10, 10}, {}, {}},
        {"nothing but zeros", {0, 0, 10, 10}, {0, 0}, {}},
        {"less than nothing", {0, 0, 10, 10}, {1, -1.5}, {}},
        {"no width", {0, 0, 0, 10}, {1}, {}},
        {"no height", {0, 0, 10, -1}, {1}, {}},
        {"not a number", {0, 0, 10, 10}, {1, std::nan("")}, {}},
        {"too much to add up: no areas, but no nonsense either",
         {0, 0, 4, 2},
         {1e308, 1.5e308},
         {{1, {0, 0, 0, 0}}, {0, {0, 0, 0, 0}}}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::vector<core::TreemapRect> tiles = core::Treemap::squarify(itemsOf(row.values), row.in);
        ASSERT_EQ(tiles.size(), row.tiles.size());
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            EXPECT_EQ(tiles[i].id, row.tiles[i].id);
            const Rectangle& found = tiles[i].rect;
            const Rectangle& wanted = row.tiles[i].rect;
            EXPECT_NEAR(found.x, wanted.x, 1e-12);
            EXPECT_NEAR(found.y, wanted.y, 1e-12);
            EXPECT_NEAR(found.width, wanted.width, 1e-12);
            EXPECT_NEAR(found.height, wanted.height, 1e-12);
        }
    }
}

} // namespace
