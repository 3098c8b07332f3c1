#pragma once

#include <cstddef>
#include <vector>

namespace core {

/// What a tile is wanted for.
struct TreemapItem {
    std::size_t id = 0; ///< comes back with the tile: its caller's way to all else that the tile stands for
    double value = 0;   ///< its weight, never negative
};

struct TreemapRect;

namespace Treemap {

/// Position and size; y grows downwards.
struct Rectangle {
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
};

/// Lays the items out inside `in`, each with an area in proportion to its value and as near to a square as
/// may be; the tiles come largest first, equal ones in the order of the items. What would only fit into a
/// strip at most half a unit thick gets no tile, and nothing does when there is nothing to lay out or no
/// room. Any thread.
///
/// The squarified treemap of M. Bruls, K. Huizing and J. van Wijk, "Squarified Treemaps", 2000: rows of tiles
/// along the shorter side of the space that is left, each as long as its worst tile gets no worse.
std::vector<TreemapRect> squarify(const std::vector<TreemapItem>& items, const Rectangle& in);

} // namespace Treemap

/// The tile of an item.
struct TreemapRect {
    std::size_t id = 0;
    Treemap::Rectangle rect;
};

} // namespace core
