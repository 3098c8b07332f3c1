#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace SampleDisk {

struct Colour {
    std::uint8_t red = 0, green = 0, blue = 0;
};

/// `percent` of the way from one colour to the other.
Colour between(Colour from, Colour to, int percent);

struct Box {
    int left, top, right, bottom; ///< the last two are just outside
};

/// A picture being painted. It reckons in whole numbers only: machines round fractions differently, and the
/// same sample must have the same pictures everywhere. What lies outside is cut off.
class Canvas {
public:
    Canvas(int width, int height);

    int width() const { return m_width; }
    int height() const { return m_height; }
    Colour at(int x, int y) const { return m_pixels[index(x, y)]; }

    void box(Box box, Colour colour);
    void gradient(Box box, Colour top, Colour bottom);
    void ellipse(int x, int y, int radiusX, int radiusY, Colour colour); ///< around a point, with soft edges
    void disc(int x, int y, int radius, Colour colour) { ellipse(x, y, radius, radius, colour); }

    /// Everything below a line through these heights, which are spread evenly over the width.
    void ridge(std::span<const int> heights, Colour colour);

private:
    std::size_t index(int x, int y) const { return static_cast<std::size_t>(y * m_width + x); }
    Box inside(Box box) const;

    int m_width;
    int m_height;
    std::vector<Colour> m_pixels;
};

} // namespace SampleDisk
