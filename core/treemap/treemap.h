#pragma once

#include <cstddef>
#include <vector>

namespace core {

/// An item to lay out.
struct TreemapItem {
    std::size_t id = 0; ///< chosen by the caller and copied to the item's tile
    double value = 0;   ///< weight, never negative
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

/// Returns one tile per item inside `in`, with an area proportional to the item's value; largest first, equal
/// values in the order given. Layout stops when the free space is at most 0.5 units wide or high: the items
/// left get no tile. Returns nothing if the values add up to 0 or `in` is empty. Any thread.
///
/// Implements the squarified treemap of M. Bruls, K. Huizing and J. van Wijk, "Squarified Treemaps", 2000:
/// fills rows along the shorter side of the free space, and starts a new row when another tile would worsen
/// the row's worst aspect ratio.
std::vector<TreemapRect> squarify(const std::vector<TreemapItem>& items, const Rectangle& in);

} // namespace Treemap

/// The tile of the item with the same id.
struct TreemapRect {
    std::size_t id = 0;
    Treemap::Rectangle rect;
};

} // namespace core
