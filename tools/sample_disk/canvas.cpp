#include "tools/sample_disk/canvas.h"

#include <algorithm>

namespace sample_disk {

Color mixed(Color from, Color to, int percent) {
    const auto part = [percent](int low, int high) {
        return static_cast<std::uint8_t>(low + (high - low) * percent / 100);
    };
    return {part(from.red, to.red), part(from.green, to.green), part(from.blue, to.blue)};
}

Canvas::Canvas(int width, int height) : m_width(width), m_height(height), m_pixels(index(0, height)) {}

void Canvas::fill(Box box, Color color) {
    gradient(box, color, color);
}

void Canvas::gradient(Box box, Color top, Color bottom) {
    const Box seen = clipped(box);
    for (int y = seen.top; y < seen.bottom; ++y) {
        const Color color = mixed(top, bottom, 100 * (y - box.top) / (box.bottom - box.top));
        std::fill(m_pixels.begin() + y * m_width + seen.left,
                  m_pixels.begin() + y * m_width + std::max(seen.left, seen.right), color);
    }
}

void Canvas::ellipse(int x, int y, int radiusX, int radiusY, Color color) {
    if (radiusX <= 0 || radiusY <= 0)
        return;
    constexpr int one = 4'096;
    const Box seen = clipped({x - radiusX - 1, y - radiusY - 1, x + radiusX + 2, y + radiusY + 2});
    for (int row = seen.top; row < seen.bottom; ++row) {
        const int above = one * (row - y) * (row - y) / (radiusY * radiusY);
        for (int column = seen.left; column < seen.right; ++column) {
            const int within = one - above - one * (column - x) * (column - x) / (radiusX * radiusX);
            const int percent = 50 + 50 * within * std::min(radiusX, radiusY) / one;
            if (percent > 0) {
                Color& pixel = m_pixels[index(column, row)];
                pixel = mixed(pixel, color, std::min(percent, 100));
            }
        }
    }
}

void Canvas::circle(int x, int y, int radius, Color color) {
    ellipse(x, y, radius, radius, color);
}

void Canvas::ridge(std::span<const int> heights, Color color) {
    const int spans = static_cast<int>(heights.size()) - 1;
    for (int x = 0; x < m_width; ++x) {
        const int along = 256 * spans * x / m_width;
        const int span = along / 256;
        const int part = along % 256;
        const int eased = part * part * (768 - 2 * part) / 65'536; // smoothstep
        const int from = heights[static_cast<std::size_t>(span)];
        const int to = heights[static_cast<std::size_t>(span) + 1];
        const int edge = 16 * from + (to - from) * eased / 16; // in sixteenths of a pixel
        const int top = edge / 16;
        if (top >= 0 && top < m_height) {
            Color& pixel = m_pixels[index(x, top)];
            pixel = mixed(pixel, color, 100 - 100 * (edge % 16) / 16);
        }
        for (int y = std::max(0, top + 1); y < m_height; ++y)
            m_pixels[index(x, y)] = color;
    }
}

Box Canvas::clipped(Box box) const {
    return {std::max(box.left, 0), std::max(box.top, 0), std::min(box.right, m_width),
            std::min(box.bottom, m_height)};
}

} // namespace sample_disk
