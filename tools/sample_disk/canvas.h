#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace sample_disk {

struct Color {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// Returns the color that is `percent` of the way from one to the other.
Color mixed(Color from, Color to, int percent);

struct Box {
    int left, top, right, bottom; ///< right and bottom are exclusive
};

/// An RGB picture to draw on. Shapes are clipped to it.
class Canvas {
public:
    Canvas(int width, int height);

    int width() const { return m_width; }
    int height() const { return m_height; }
    const std::uint8_t* row(int y) const { return &m_pixels[index(0, y)].red; } ///< red, green, blue, red…

    void fill(Box box, Color color);
    void gradient(Box box, Color top, Color bottom);
    void ellipse(int x, int y, int radiusX, int radiusY, Color color); ///< around a point, with soft edges
    void circle(int x, int y, int radius, Color color);

    /// Fills everything below a curve through these heights, which are spread evenly over the width.
    void ridge(std::span<const int> heights, Color color);

private:
    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y * m_width + x); }
    Box clipped(Box box) const;

    int m_width;
    int m_height;
    std::vector<Color> m_pixels;
};

} // namespace sample_disk
