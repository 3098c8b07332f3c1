#include "tools/sample_disk/app_icon.h"

#include "tools/sample_disk/canvas.h"
#include "tools/sample_disk/picture_file.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace sample_disk {

namespace {

/// Strokes of a letter on a grid of 4 by 6: points of two digits (from the left, from the top).
struct Letter {
    char name;
    std::string_view strokes; ///< separated by "|"
};

constexpr Letter letters[] = {
    {'1', "11 20 26|16 36"},
    {'A', "06 20 46|14 34"},
    {'B', "00 30 41 42 33 03|33 44 45 36 06 00"},
    {'C', "41 30 10 01 05 16 36 45"},
    {'D', "00 20 42 44 26 06 00"},
    {'E', "40 00 06 46|03 33"},
    {'F', "40 00 06|03 33"},
    {'G', "41 30 10 01 05 16 36 45 43 23"},
    {'H', "00 06|40 46|03 43"},
    {'I', "10 30|20 26|16 36"},
    {'J', "40 45 36 16 05"},
    {'K', "00 06|40 04|13 46"},
    {'L', "00 06 46"},
    {'M', "06 00 23 40 46"},
    {'N', "06 00 46 40"},
    {'O', "10 30 41 45 36 16 05 01 10"},
    {'P', "06 00 30 41 42 33 03"},
    {'Q', "10 30 41 45 36 16 05 01 10|24 46"},
    {'R', "06 00 30 41 42 33 03|23 46"},
    {'S', "41 30 10 01 02 13 33 44 45 36 16 05"},
    {'T', "00 40|20 26"},
    {'U', "00 05 16 36 45 40"},
    {'V', "00 26 40"},
    {'W', "00 16 22 36 40"},
    {'X', "00 46|40 06"},
    {'Y', "00 23 40|23 26"},
    {'Z', "00 40 06 46"},
};

constexpr std::pair<Color, Color> colors[] = {
    {{96, 165, 250}, {37, 99, 235}},   {{251, 146, 60}, {220, 80, 30}},  {{74, 222, 128}, {22, 140, 74}},
    {{167, 139, 250}, {109, 62, 220}}, {{248, 113, 113}, {200, 40, 60}}, {{45, 212, 191}, {13, 130, 136}},
    {{250, 204, 21}, {217, 130, 10}},  {{148, 163, 184}, {60, 75, 100}}, {{244, 114, 182}, {190, 35, 110}},
};

struct Point {
    double x = 0, y = 0;
};

struct Line {
    Point from, to;

    double distance(Point point) const {
        const Point along{to.x - from.x, to.y - from.y};
        const double part = ((point.x - from.x) * along.x + (point.y - from.y) * along.y)
                            / (along.x * along.x + along.y * along.y);
        const double within = std::clamp(part, 0.0, 1.0);
        return std::hypot(point.x - from.x - within * along.x, point.y - from.y - within * along.y);
    }
};

/// Returns the strokes of the name's first letter in a square whose side is 1.
std::vector<Line> linesOf(std::string_view name) {
    constexpr double cell = 0.062;
    const char initial = static_cast<char>(std::toupper(static_cast<unsigned char>(name.front())));
    std::vector<Line> lines;
    for (const Letter& letter : letters) {
        if (letter.name != initial)
            continue;
        const auto pointAt = [&](std::size_t at) {
            return Point{0.5 + cell * (letter.strokes[at] - '2'),
                         0.5 + cell * (letter.strokes[at + 1] - '3')};
        };
        for (std::size_t at = 3; at < letter.strokes.size(); at += 3)
            if (letter.strokes[at - 1] != '|')
                lines.push_back({pointAt(at - 3), pointAt(at)});
    }
    return lines;
}

/// Returns side * side pixels of four bytes: red, green, blue and opacity.
std::vector<std::uint8_t> drawn(std::string_view name, int side) {
    constexpr double margin = 0.098;
    constexpr double radius = 0.18;
    constexpr double strokeWidth = 0.075;
    std::uint32_t sum = 0;
    for (const char c : name)
        sum = sum * 31 + static_cast<unsigned char>(c);
    const auto& [top, bottom] = colors[sum % std::size(colors)];
    const std::vector<Line> lines = linesOf(name);
    // Share of a pixel that a shape covers whose edge is at this distance, in pixels; negative inside.
    const auto covered = [side](double distance) {
        return std::clamp(0.5 - distance * side, 0.0, 1.0);
    };
    std::vector<std::uint8_t> pixels;
    for (int row = 0; row < side; ++row) {
        const Color ground = mixed(top, bottom, 100 * row / side);
        for (int column = 0; column < side; ++column) {
            const Point point{(column + 0.5) / side, (row + 0.5) / side};
            const double inner = 0.5 - margin - radius;
            const double x = std::max(std::abs(point.x - 0.5) - inner, 0.0);
            const double y = std::max(std::abs(point.y - 0.5) - inner, 0.0);
            double stroke = 1;
            for (const Line& line : lines)
                stroke = std::min(stroke, line.distance(point));
            const int percent = static_cast<int>(100 * covered(stroke - strokeWidth / 2));
            const Color color = mixed(ground, {255, 255, 255}, percent);
            const auto opacity = static_cast<std::uint8_t>(255 * covered(std::hypot(x, y) - radius));
            pixels.insert(pixels.end(), {color.red, color.green, color.blue, opacity});
        }
    }
    return pixels;
}

/// Returns a block of an icon file: type, length with this header (big-endian), content.
std::string block(std::string_view type, std::string_view content) {
    std::string result(type);
    for (int shift = 24; shift >= 0; shift -= 8)
        result += static_cast<char>((content.size() + 8) >> shift & 0xFF);
    return result.append(content);
}

/// Returns one of the four channels, a byte per pixel.
std::string channel(const std::vector<std::uint8_t>& pixels, std::size_t index) {
    std::string bytes;
    for (std::size_t i = index; i < pixels.size(); i += 4)
        bytes += static_cast<char>(pixels[i]);
    return bytes;
}

/// Compresses a channel: 128 to 255 stands for 3 to 130 times the next byte, a smaller number for that many
/// bytes and one more, which follow.
std::string packed(std::string_view bytes) {
    constexpr std::size_t maxRepeats = 130;
    constexpr std::size_t maxLiteral = 128;
    std::string result;
    std::string literal;
    const auto endLiteral = [&] {
        if (!literal.empty())
            result.append(1, static_cast<char>(literal.size() - 1)).append(literal);
        literal.clear();
    };
    while (!bytes.empty()) {
        const std::size_t repeats =
            std::min({bytes.find_first_not_of(bytes.front()), bytes.size(), maxRepeats});
        if (repeats < 3) {
            literal += bytes.front();
            bytes.remove_prefix(1);
            if (literal.size() == maxLiteral)
                endLiteral();
            continue;
        }
        endLiteral();
        result.append(1, static_cast<char>(repeats - 3 + 128)).append(1, bytes.front());
        bytes.remove_prefix(repeats);
    }
    endLiteral();
    return result;
}

std::string rgb(const std::vector<std::uint8_t>& pixels) {
    return packed(channel(pixels, 0)) + packed(channel(pixels, 1)) + packed(channel(pixels, 2));
}

} // namespace

std::string iconFile(std::string_view name, IconFormat format) {
    const auto pixels = [&](int side) {
        return drawn(name, side);
    };
    const auto png = [&](std::string_view type, int side) {
        return block(type, pngFile(side, pixels(side)));
    };
    const auto argb = [&](std::string_view type, int side) {
        return block(type, "ARGB" + packed(channel(pixels(side), 3)) + rgb(pixels(side)));
    };
    const auto masked = [&](std::string_view type, std::string_view mask, int side,
                            const std::string& start) {
        return block(type, start + rgb(pixels(side))) + block(mask, channel(pixels(side), 3));
    };
    switch (format) {
    case IconFormat::png:
        return block("icns", png("ic11", 32) + png("ic12", 64) + png("ic07", 128));
    case IconFormat::argb:
        return block("icns", argb("ic04", 16) + argb("ic05", 32) + png("ic07", 128));
    case IconFormat::rgb:
        return block("icns",
                     masked("il32", "l8mk", 32, "") + masked("it32", "t8mk", 128, std::string(4, '\0')));
    case IconFormat::jpeg2000:
        break;
    }
    constexpr std::string_view signature("\0\0\0\x0CjP  \r\n\x87\n", 12);
    return block("icns", block("ic08", signature));
}

} // namespace sample_disk
