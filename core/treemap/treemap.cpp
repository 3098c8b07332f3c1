#include "core/treemap/treemap.h"

#include <algorithm>
#include <limits>
#include <span>

namespace core {

namespace {

using Treemap::Rectangle;

/// Layout stops when a side of the free space is not longer than this.
constexpr double minSide = 0.5;

struct Piece {
    std::size_t id = 0;
    double area = 0;
};

using Pieces = std::span<const Piece>;

/// The sum and the worst aspect ratio (longer side / shorter side; infinite for an empty tile) of a row of
/// tiles along a side of the free space. `side` is positive. Pieces are added in descending order of area.
class Row {
public:
    Row(const Piece& first, double side) : m_square(side * side), m_largest(first.area), m_sum(first.area) {
        if (first.area > 0)
            m_worst = std::max(m_square / first.area, first.area / m_square);
    }

    double sum() const { return m_sum; }

    /// Adds the piece unless that increases the worst ratio. Returns whether it was added.
    bool add(const Piece& piece) {
        const double sum = m_sum + piece.area;
        double worst = infinity;
        if (piece.area > 0)
            worst = std::max(m_square * m_largest / (sum * sum), sum * sum / (m_square * piece.area));
        const bool isNoWorse = worst <= m_worst;
        if (isNoWorse) {
            m_sum = sum;
            m_worst = worst;
        }
        return isNoWorse;
    }

private:
    static constexpr double infinity = std::numeric_limits<double>::infinity();

    double m_square;
    double m_largest;
    double m_sum;
    double m_worst = infinity;
};

/// Places a row along the top edge, from left to right, and removes it from the free space.
void placeAlongTop(Pieces row, double sum, Rectangle& free, std::vector<TreemapRect>& tiles) {
    const double height = std::min(free.height, sum / free.width);
    double x = free.x;
    for (const Piece& piece : row) {
        const double width = height > 0 ? piece.area / height : 0;
        tiles.push_back({piece.id, {x, free.y, width, height}});
        x += width;
    }
    free.y += height;
    free.height -= height;
}

/// Places a row along the left edge, from top to bottom, and removes it from the free space.
void placeAlongLeft(Pieces row, double sum, Rectangle& free, std::vector<TreemapRect>& tiles) {
    const double width = std::min(free.width, sum / free.height);
    double y = free.y;
    for (const Piece& piece : row) {
        const double height = width > 0 ? piece.area / width : 0;
        tiles.push_back({piece.id, {free.x, y, width, height}});
        y += height;
    }
    free.x += width;
    free.width -= width;
}

/// Returns the items largest first, with values scaled to areas that add up to the area of `space`; nothing
/// if the values or `space` are empty.
std::vector<Piece> scaledPieces(std::vector<TreemapItem> items, const Rectangle& space) {
    double total = 0;
    for (const TreemapItem& item : items)
        total += item.value;
    if (!(total > 0 && space.width > 0 && space.height > 0))
        return {};
    std::stable_sort(items.begin(), items.end(),
                     [](const TreemapItem& a, const TreemapItem& b) { return a.value > b.value; });
    const double scale = space.width * space.height / total;
    std::vector<Piece> pieces;
    pieces.reserve(items.size());
    for (const TreemapItem& item : items)
        pieces.push_back({item.id, item.value * scale});
    return pieces;
}

} // namespace

std::vector<TreemapRect> Treemap::squarify(const std::vector<TreemapItem>& items, const Rectangle& in) {
    const std::vector<Piece> pieces = scaledPieces(items, in);
    std::vector<TreemapRect> tiles;
    tiles.reserve(pieces.size());
    Rectangle free = in;
    for (Pieces rest = pieces; !rest.empty() && free.width > minSide && free.height > minSide;) {
        Row row(rest.front(), std::min(free.width, free.height));
        std::size_t length = 1;
        while (length < rest.size() && row.add(rest[length]))
            ++length;
        if (free.width <= free.height)
            placeAlongTop(rest.first(length), row.sum(), free, tiles);
        else
            placeAlongLeft(rest.first(length), row.sum(), free, tiles);
        rest = rest.subspan(length);
    }
    return tiles;
}

} // namespace core
