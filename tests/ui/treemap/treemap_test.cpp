#include "ui/treemap/treemap.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <ostream>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Treemap {

void PrintTo(const Rectangle& r, std::ostream* out) {
    *out << "(" << r.x << ", " << r.y << "; " << r.width << " x " << r.height << ")";
}

} // namespace Treemap

namespace {

using Treemap::Rectangle;

std::vector<TreemapItem> itemsOf(const std::vector<double>& values) {
    std::vector<TreemapItem> items;
    for (const double value : values)
        items.push_back({items.size(), value});
    return items;
}

double areaOf(const Rectangle& r) {
    return r.width * r.height;
}

double rightOf(const Rectangle& r) {
    return r.x + r.width;
}

double bottomOf(const Rectangle& r) {
    return r.y + r.height;
}

/// A map as it came out, with what it was made of.
class Map {
public:
    Map(const std::vector<double>& values, const Rectangle& in)
        : m_items(itemsOf(values)), m_in(in), m_tiles(Treemap::squarify(m_items, in)) {
        double total = 0;
        for (const double value : values)
            total += value;
        m_scale = areaOf(in) / total;
        std::stable_sort(m_items.begin(), m_items.end(),
                         [](const TreemapItem& a, const TreemapItem& b) { return a.value > b.value; });
    }

    const std::vector<TreemapRect>& tiles() const { return m_tiles; }

    void expectTilesOfTheirSizesInOrder() const {
        ASSERT_LE(m_tiles.size(), m_items.size());
        for (std::size_t i = 0; i < m_tiles.size(); ++i) {
            const Rectangle& tile = m_tiles[i].rect;
            ASSERT_EQ(m_tiles[i].id, m_items[i].id);
            ASSERT_NEAR(areaOf(tile), areaOfItem(i), m_rounding * areaOf(m_in));
            ASSERT_GE(tile.x, m_in.x - slack());
            ASSERT_GE(tile.y, m_in.y - slack());
            ASSERT_LE(rightOf(tile), rightOf(m_in) + slack());
            ASSERT_LE(bottomOf(tile), bottomOf(m_in) + slack());
        }
    }

    void expectNoOverlap() const {
        for (std::size_t i = 0; i < m_tiles.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) {
                const Rectangle& a = m_tiles[i].rect;
                const Rectangle& b = m_tiles[j].rect;
                const double across = std::min(rightOf(a), rightOf(b)) - std::max(a.x, b.x);
                const double down = std::min(bottomOf(a), bottomOf(b)) - std::max(a.y, b.y);
                ASSERT_LE(std::min(across, down), slack()) << i << " and " << j;
            }
        }
    }

    /// What is left empty is a strip too thin for a tile, and nothing when every item has one.
    void expectNoGap() const {
        double laid = 0;
        for (const TreemapRect& tile : m_tiles)
            laid += areaOf(tile.rect);
        const double strip = m_tiles.size() < m_items.size() ? 0.5 * std::max(m_in.width, m_in.height) : 0;
        ASSERT_NEAR(laid, areaOf(m_in), strip + m_rounding * areaOf(m_in));
    }

private:
    double areaOfItem(std::size_t i) const { return m_items[i].value * m_scale; }
    double slack() const { return m_rounding * (m_in.width + m_in.height); }

    static constexpr double m_rounding = 1e-9;

    std::vector<TreemapItem> m_items; ///< largest first
    Rectangle m_in;
    std::vector<TreemapRect> m_tiles;
    double m_scale = 0;
};

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
            SCOPED_TRACE(testing::PrintToString(in) + ", round " + std::to_string(round));

            const Map map(values, in);
            map.expectTilesOfTheirSizesInOrder();
            map.expectNoOverlap();
            map.expectNoGap();
            if (HasFailure())
                return;
        }
    }
}

TEST(Treemap, LaysOutWhatWasReckonedByHand) {
    const double third = 1.0 / 3;
    const struct {
        const char* what;
        Rectangle in;
        std::vector<double> values;
        std::vector<TreemapRect> tiles;
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
        {"a row takes more while that makes its worst tile better",
         {0, 0, 30, 30},
         {1, 1, 1, 1, 1, 1, 1, 1, 1},
         {{0, {0, 0, 10, 10}},
          {1, {10, 0, 10, 10}},
          {2, {20, 0, 10, 10}},
          {3, {0, 10, 10, 10}},
          {4, {0, 20, 10, 10}},
          {5, {10, 10, 10, 10}},
          {6, {20, 10, 10, 10}},
          {7, {10, 20, 10, 10}},
          {8, {20, 20, 10, 10}}}},
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
        {"largest first, equal ones as they came",
         {0, 0, 40, 10},
         {1, 2, 1},
         {{1, {0, 0, 20, 10}}, {0, {20, 0, 10, 10}}, {2, {30, 0, 10, 10}}}},
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
         {{1, {0, 0, 0, 0}}, {0, {0, 0, 0, 0}}}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        const std::vector<TreemapRect> tiles = Treemap::squarify(itemsOf(row.values), row.in);
        ASSERT_EQ(tiles.size(), row.tiles.size());
        for (std::size_t i = 0; i < tiles.size(); ++i) {
            EXPECT_EQ(tiles[i].id, row.tiles[i].id);
            EXPECT_NEAR(tiles[i].rect.x, row.tiles[i].rect.x, 1e-12);
            EXPECT_NEAR(tiles[i].rect.y, row.tiles[i].rect.y, 1e-12);
            EXPECT_NEAR(tiles[i].rect.width, row.tiles[i].rect.width, 1e-12);
            EXPECT_NEAR(tiles[i].rect.height, row.tiles[i].rect.height, 1e-12);
        }
    }
}

} // namespace
