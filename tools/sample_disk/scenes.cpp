#include "tools/sample_disk/scenes.h"

#include <algorithm>
#include <array>

namespace sample_disk {

namespace {

constexpr Color white = {250, 250, 248};
constexpr Color black = {18, 18, 24};

Color around(Color color, int spread, Random& random) {
    const auto moved = [&](int part) {
        return static_cast<std::uint8_t>(std::clamp(part + random.between(-spread, spread), 0, 255));
    };
    return {moved(color.red), moved(color.green), moved(color.blue)}; // braces: in this order
}

template <std::size_t count>
Color oneOf(const std::array<Color, count>& colors, Random& random) {
    return around(colors[random.next() % count], 12, random);
}

Box all(const Canvas& canvas) {
    return {0, 0, canvas.width(), canvas.height()};
}

struct Sky {
    Color top, bottom, sun;
};
constexpr std::array<Sky, 4> skies = {{
    {{58, 128, 214}, {190, 222, 244}, {255, 250, 222}},
    {{70, 60, 120}, {250, 160, 106}, {255, 226, 150}},
    {{116, 140, 164}, {220, 222, 220}, {244, 244, 238}},
    {{34, 74, 140}, {244, 196, 170}, {255, 240, 200}},
}};

/// Paints a sky down to `horizon`, most times with a sun.
Sky paintSky(Canvas& canvas, int horizon, Random& random) {
    Sky sky = skies[random.next() % skies.size()];
    sky.top = around(sky.top, 18, random);
    sky.bottom = around(sky.bottom, 10, random);
    canvas.gradient({0, 0, canvas.width(), horizon}, sky.top, sky.bottom);
    const int x = random.between(canvas.width() / 8, canvas.width() * 7 / 8);
    const int y = random.between(canvas.height() / 10, horizon - 8);
    if (random.chance(70))
        canvas.circle(x, y, random.between(9, 20), sky.sun);
    for (int cloud = random.between(0, 3); cloud > 0; --cloud) {
        const int left = random.between(0, canvas.width());
        const int height = random.between(12, horizon / 2);
        for (int puff = 0; puff < 4; ++puff)
            canvas.ellipse(left + 13 * puff, height - random.between(0, 5), random.between(12, 20),
                           random.between(4, 7), mixed(sky.bottom, white, 60));
    }
    return sky;
}

void paintShore(Canvas& canvas, Random& random) {
    const int horizon = canvas.height() * random.between(38, 55) / 100;
    const Sky sky = paintSky(canvas, horizon, random);
    const Color deep = around({18, 84, 124}, 24, random);
    canvas.gradient({0, horizon, canvas.width(), canvas.height()}, mixed(deep, sky.bottom, 45), deep);
    for (int wave = 0; wave < 26; ++wave) {
        const int y = random.between(horizon + 2, canvas.height());
        const int x = random.between(0, canvas.width());
        canvas.fill({x, y, x + 4 + (y - horizon) / 3, y + 1}, mixed(deep, white, random.between(25, 60)));
    }
    std::array<int, 5> sand{};
    for (int& height : sand)
        height = canvas.height() - random.between(4, canvas.height() / 4);
    canvas.ridge(sand, white); // a line of foam
    for (int& height : sand)
        height += 3;
    canvas.ridge(sand, around({222, 196, 148}, 16, random));
}

void paintHills(Canvas& canvas, Random& random) {
    const int horizon = canvas.height() / 2;
    const Sky sky = paintSky(canvas, horizon + 20, random);
    constexpr std::array<Color, 4> grounds = {{{44, 92, 52}, {70, 84, 110}, {126, 92, 48}, {30, 70, 84}}};
    const Color near = oneOf(grounds, random);
    for (int range = 0; range < 4; ++range) {
        std::array<int, 7> heights{};
        const int rise = 34 - 7 * range;
        for (int& height : heights)
            height = horizon - 6 + range * canvas.height() / 9 - random.between(-rise / 2, rise);
        canvas.ridge(heights, mixed(near, sky.bottom, 72 - 24 * range));
    }
}

void paintNight(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({10, 14, 40}, 8, random), around({66, 48, 96}, 22, random));
    canvas.circle(random.between(20, 236), random.between(18, 50), random.between(7, 14), {240, 238, 220});
    for (int x = random.between(-12, 0); x < canvas.width();) {
        const int width = random.between(16, 40);
        const int top = canvas.height() - random.between(30, 120);
        canvas.fill({x, top, x + width, canvas.height()}, around({26, 28, 46}, 10, random));
        for (int y = top + 5; y < canvas.height() - 4; y += 8)
            for (int window = x + 4; window + 4 < x + width; window += 7)
                if (random.chance(45))
                    canvas.fill({window, y, window + 3, y + 4}, around({250, 210, 120}, 30, random));
        x += width + random.between(0, 6);
    }
}

void paintBlossom(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({60, 104, 48}, 24, random), around({24, 56, 30}, 14, random));
    constexpr std::array<Color, 4> petals = {
        {{224, 66, 92}, {248, 196, 62}, {236, 228, 240}, {156, 92, 200}}};
    constexpr int directions[][2] = {{10, 0},  {7, 7},   {0, 10},  {-7, 7},
                                     {-10, 0}, {-7, -7}, {0, -10}, {7, -7}};
    const Color color = oneOf(petals, random);
    for (int flower = random.between(1, 4); flower > 0; --flower) {
        const int radius = random.between(14, 34);
        const int x = random.between(radius, canvas.width() - radius);
        const int y = random.between(radius, canvas.height() - radius);
        for (const auto& [right, down] : directions)
            canvas.circle(x + right * radius / 10, y + down * radius / 10, radius * 6 / 10,
                          mixed(color, white, 9 + right));
        canvas.circle(x, y, radius / 2, around({238, 190, 58}, 14, random));
    }
}

void paintMeal(Canvas& canvas, Random& random) {
    constexpr std::array<Color, 4> tables = {{{150, 106, 70}, {92, 70, 60}, {196, 200, 204}, {70, 96, 104}}};
    const Color table = oneOf(tables, random);
    canvas.fill(all(canvas), table);
    const int x = canvas.width() / 2 + random.between(-24, 24);
    const int y = canvas.height() / 2 + random.between(-14, 14);
    const int radius = random.between(58, 78);
    canvas.circle(x + 4, y + 6, radius, mixed(table, black, 50)); // its shadow
    canvas.circle(x, y, radius, around({240, 238, 232}, 12, random));
    constexpr std::array<Color, 5> foods = {
        {{200, 60, 44}, {104, 146, 52}, {232, 176, 70}, {140, 84, 48}, {248, 226, 170}}};
    for (int piece = random.between(9, 18); piece > 0; --piece)
        canvas.ellipse(x + random.between(-radius / 2, radius / 2),
                       y + random.between(-radius / 2, radius / 2), random.between(6, 17),
                       random.between(5, 13), oneOf(foods, random));
}

void paintPortrait(Canvas& canvas, Random& random) {
    const Color back = around({140, 150, 160}, 70, random);
    canvas.gradient(all(canvas), mixed(back, white, 25), mixed(back, black, 30));
    constexpr std::array<Color, 4> skins = {
        {{244, 206, 178}, {226, 174, 138}, {186, 128, 92}, {134, 86, 60}}};
    constexpr std::array<Color, 4> hairs = {{{40, 28, 22}, {104, 66, 36}, {214, 174, 104}, {150, 150, 152}}};
    const Color skin = oneOf(skins, random);
    const Color hair = oneOf(hairs, random);
    const int x = canvas.width() / 2 + random.between(-14, 14);
    const int y = canvas.height() * 2 / 5 + random.between(-10, 10);
    const int size = random.between(38, 48);
    canvas.ellipse(x, y + size / 3, size + 8, size + size / random.between(1, 3), hair);
    canvas.ellipse(x, canvas.height() + 6, size * 2, size + 40, around({90, 90, 130}, 80, random));
    canvas.fill({x - size / 3, y + size / 2, x + size / 3, y + size * 3 / 2}, mixed(skin, black, 14));
    canvas.ellipse(x, y + 4, size * 4 / 5, size, skin);
    canvas.ellipse(x, y - size * 3 / 4, size * 4 / 5, size / 2, hair);
    for (const int eye : {x - size / 3, x + size / 3}) {
        canvas.ellipse(eye, y + 2, 6, 4, white);
        canvas.circle(eye, y + 2, 3, black);
    }
    canvas.ellipse(x, y + size * 2 / 3, random.between(9, 15), random.between(2, 5), {178, 66, 70});
}

/// Draws lines of words as bars.
void paintText(Canvas& canvas, Box box, int lineHeight, Color ink, Random& random) {
    for (int y = box.top; y + lineHeight <= box.bottom; y += lineHeight) {
        const int end = box.right - (box.right - box.left) * random.between(0, 45) / 100;
        for (int x = box.left, word = 0; x < end; x += word + 3) {
            word = random.between(5, 19);
            canvas.fill({x, y, std::min(x + word, end), y + lineHeight / 2}, ink);
        }
    }
}

void paintScreenshot(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({90, 90, 170}, 60, random), around({170, 90, 130}, 60, random));
    const bool isDark = random.chance(35);
    const Color page = isDark ? Color{36, 38, 44} : white;
    const Color ink = isDark ? Color{150, 152, 160} : Color{104, 106, 114};
    const Box window = {random.between(10, 26), random.between(10, 22),
                        canvas.width() - random.between(8, 24), canvas.height() - random.between(8, 22)};
    canvas.fill(window, page);
    canvas.fill({window.left, window.top, window.right, window.top + 15}, mixed(page, ink, 25));
    for (int button = 0; button < 3; ++button)
        canvas.circle(window.left + 9 + 11 * button, window.top + 7, 3, {236, 150, 80});
    const int side = window.left + random.between(44, 66);
    canvas.fill({window.left, window.top + 15, side, window.bottom}, mixed(page, ink, 14));
    paintText(canvas, {window.left + 7, window.top + 24, side - 8, window.bottom - 6}, 11, ink, random);
    const int middle = window.top + random.between(40, 80);
    canvas.fill({side + 10, window.top + 24, window.right - 10, middle}, around({80, 150, 200}, 60, random));
    paintText(canvas, {side + 10, middle + 8, window.right - 10, window.bottom - 6}, 8, ink, random);
}

} // namespace

Canvas paint(Scene scene, Random& random) {
    constexpr std::array painters = {paintShore, paintHills,    paintNight,     paintBlossom,
                                     paintMeal,  paintPortrait, paintScreenshot};
    const bool isUpright = scene == Scene::portrait;
    Canvas canvas(isUpright ? 192 : 256, isUpright ? 256 : 192);
    painters[static_cast<std::size_t>(scene)](canvas, random);
    return canvas;
}

} // namespace sample_disk
