#include "core/treemap/treemap.h"

#include <algorithm>
#include <limits>
#include <span>

namespace core {

namespace {

using Treemap::Rectangle;

/// Free space this thin is left empty.
constexpr double thinnest = 0.5;

struct Piece {
    std::size_t id = 0;
    double area = 0;
};

using Pieces = std::span<const Piece>;

/// A row along a side of the free space, which takes pieces from the largest down. Its worst ratio is that of
/// the tile that is least a square, as the longer of its sides over the shorter; infinite where a tile would
/// have no extent. The side has some: what is too thin is left empty before.
class Row {
public:
    Row(const Piece& first, double side) : m_square(side * side), m_largest(first.area), m_sum(first.area) {
        if (first.area > 0)
            m_worst = std::max(m_square / first.area, first.area / m_square);
    }

    double sum() const { return m_sum; }

    /// Takes the piece in unless that makes the worst ratio worse; says whether it did.
    bool takes(const Piece& piece) {
        const double sum = m_sum + piece.area;
        const double worst =
            piece.area > 0 ? std::max(m_square * m_largest / (sum * sum), sum * sum / (m_square * piece.area))
                           : infinity;
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

/// A band along the top, its tiles from left to right.
void layAcross(Pieces row, double sum, Rectangle& free, std::vector<TreemapRect>& tiles) {
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

/// A band along the left edge, its tiles from the top down.
void layDown(Pieces row, double sum, Rectangle& free, std::vector<TreemapRect>& tiles) {
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

/// The pieces largest first, their areas filling `space` together; none where that can't be.
std::vector<Piece> piecesOf(std::vector<TreemapItem> items, const Rectangle& space) {
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
    const std::vector<Piece> pieces = piecesOf(items, in);
    std::vector<TreemapRect> tiles;
    tiles.reserve(pieces.size());
    Rectangle free = in;
    for (Pieces rest = pieces; !rest.empty() && free.width > thinnest && free.height > thinnest;) {
        Row row(rest.front(), std::min(free.width, free.height));
        std::size_t length = 1;
        while (length < rest.size() && row.takes(rest[length]))
            ++length;
        if (free.width <= free.height)
            layAcross(rest.first(length), row.sum(), free, tiles);
        else
            layDown(rest.first(length), row.sum(), free, tiles);
        rest = rest.subspan(length);
    }
    return tiles;
}

} // namespace core
