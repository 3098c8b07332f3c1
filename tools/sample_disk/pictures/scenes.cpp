#include "tools/sample_disk/pictures/scenes.h"

#include <algorithm>
#include <array>

namespace SampleDisk {

namespace {

constexpr Colour white = {250, 250, 248};
constexpr Colour black = {18, 18, 24};

Colour around(Colour colour, int spread, Random& random) {
    const auto moved = [&](int part) {
        const int value = part + random.between(-spread, spread);
        return static_cast<std::uint8_t>(value < 0 ? 0 : value > 255 ? 255 : value);
    };
    const std::uint8_t red = moved(colour.red);
    const std::uint8_t green = moved(colour.green);
    return {red, green, moved(colour.blue)};
}

template <std::size_t count>
Colour oneOf(const std::array<Colour, count>& colours, Random& random) {
    return around(colours[random.next() % count], 12, random);
}

Box all(const Canvas& canvas) {
    return {0, 0, canvas.width(), canvas.height()};
}

struct Sky {
    Colour top, bottom, sun;
};
constexpr std::array<Sky, 4> skies = {{
    {{58, 128, 214}, {190, 222, 244}, {255, 250, 222}},
    {{70, 60, 120}, {250, 160, 106}, {255, 226, 150}},
    {{116, 140, 164}, {220, 222, 220}, {244, 244, 238}},
    {{34, 74, 140}, {244, 196, 170}, {255, 240, 200}},
}};

/// A sky down to `horizon`, with its sun or without.
Sky paintSky(Canvas& canvas, int horizon, Random& random) {
    Sky sky = skies[random.next() % skies.size()];
    sky.top = around(sky.top, 18, random);
    sky.bottom = around(sky.bottom, 10, random);
    canvas.gradient({0, 0, canvas.width(), horizon}, sky.top, sky.bottom);
    const int x = random.between(canvas.width() / 8, canvas.width() * 7 / 8);
    const int y = random.between(canvas.height() / 10, horizon - 8);
    if (random.chance(70))
        canvas.disc(x, y, random.between(9, 20), sky.sun);
    for (int cloud = random.between(0, 3); cloud > 0; --cloud) {
        const int left = random.between(0, canvas.width());
        const int height = random.between(12, horizon / 2);
        for (int puff = 0; puff < 4; ++puff)
            canvas.ellipse(left + 13 * puff, height - random.between(0, 5), random.between(12, 20),
                           random.between(4, 7), between(sky.bottom, white, 60));
    }
    return sky;
}

void paintShore(Canvas& canvas, Random& random) {
    const int horizon = canvas.height() * random.between(38, 55) / 100;
    const Sky sky = paintSky(canvas, horizon, random);
    const Colour deep = around({18, 84, 124}, 24, random);
    canvas.gradient({0, horizon, canvas.width(), canvas.height()}, between(deep, sky.bottom, 45), deep);
    for (int wave = 0; wave < 26; ++wave) {
        const int y = random.between(horizon + 2, canvas.height());
        const int x = random.between(0, canvas.width());
        const int length = 4 + (y - horizon) / 3;
        canvas.box({x, y, x + length, y + 1}, between(deep, white, random.between(25, 60)));
    }
    std::array<int, 5> sand{};
    for (int& height : sand)
        height = canvas.height() - random.between(4, canvas.height() / 4);
    canvas.ridge(sand, white);
    for (int& height : sand)
        height += 3; // below a line of foam
    canvas.ridge(sand, around({222, 196, 148}, 16, random));
    if (random.chance(50)) {
        const int x = random.between(20, canvas.width() - 40);
        canvas.ellipse(x, horizon + 5, 13, 3, around({120, 50, 40}, 30, random));
        canvas.box({x - 1, horizon - 18, x + 1, horizon + 3}, black);
        for (int row = 0; row < 14; ++row)
            canvas.box({x + 2, horizon - 16 + row, x + 3 + row * 2 / 3, horizon - 15 + row}, white);
    }
}

void paintHills(Canvas& canvas, Random& random) {
    const int horizon = canvas.height() / 2;
    const Sky sky = paintSky(canvas, horizon + 20, random);
    constexpr std::array<Colour, 4> grounds = {{{44, 92, 52}, {70, 84, 110}, {126, 92, 48}, {30, 70, 84}}};
    const Colour near = oneOf(grounds, random);
    constexpr int ranges = 4;
    for (int range = 0; range < ranges; ++range) {
        std::array<int, 7> heights{};
        const int base = horizon - 6 + range * canvas.height() / 9;
        const int rise = 34 - 7 * range;
        for (int& height : heights)
            height = base - random.between(-rise / 2, rise);
        canvas.ridge(heights, between(near, sky.bottom, 72 - 24 * range));
    }
    for (int tree = random.between(0, 9); tree > 0; --tree) {
        const int x = random.between(0, canvas.width());
        const int y = canvas.height() - random.between(2, 22);
        for (int row = 0; row < 18; ++row)
            canvas.box({x - row / 3, y - 18 + row, x + row / 3 + 1, y - 17 + row}, between(near, black, 55));
    }
}

void paintNight(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({10, 14, 40}, 8, random), around({66, 48, 96}, 22, random));
    for (int star = 0; star < 40; ++star) {
        const int x = random.between(0, canvas.width());
        const int y = random.between(0, canvas.height() / 2);
        canvas.box({x, y, x + 1, y + 1}, {200, 204, 220});
    }
    canvas.disc(random.between(20, canvas.width() - 20), random.between(18, 50), random.between(7, 14),
                {240, 238, 220});
    for (int x = random.between(-12, 0); x < canvas.width();) {
        const int width = random.between(16, 40);
        const int top = canvas.height() - random.between(30, 120);
        canvas.box({x, top, x + width, canvas.height()}, around({26, 28, 46}, 10, random));
        for (int y = top + 5; y < canvas.height() - 4; y += 8) {
            for (int window = x + 4; window + 4 < x + width; window += 7) {
                if (random.chance(45))
                    canvas.box({window, y, window + 3, y + 4}, around({250, 210, 120}, 30, random));
            }
        }
        x += width + random.between(0, 6);
    }
}

void paintBlossom(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({60, 104, 48}, 24, random), around({24, 56, 30}, 14, random));
    for (int leaf = 0; leaf < 14; ++leaf)
        canvas.ellipse(random.between(0, canvas.width()), random.between(0, canvas.height()),
                       random.between(14, 40), random.between(8, 22), around({52, 98, 46}, 30, random));
    constexpr std::array<Colour, 5> petals = {
        {{224, 66, 92}, {248, 196, 62}, {236, 228, 240}, {156, 92, 200}, {240, 130, 60}}};
    constexpr std::array<std::array<int, 2>, 8> around8 = {
        {{10, 0}, {7, 7}, {0, 10}, {-7, 7}, {-10, 0}, {-7, -7}, {0, -10}, {7, -7}}};
    const Colour colour = oneOf(petals, random);
    for (int flower = random.between(1, 4); flower > 0; --flower) {
        const int radius = random.between(14, 34);
        const int x = random.between(radius, canvas.width() - radius);
        const int y = random.between(radius, canvas.height() - radius);
        const Colour own = around(colour, 16, random);
        for (std::size_t petal = 0; petal < around8.size(); ++petal)
            canvas.disc(x + around8[petal][0] * radius / 10, y + around8[petal][1] * radius / 10,
                        radius * 6 / 10, petal % 2 == 0 ? own : between(own, white, 18));
        canvas.disc(x, y, radius / 2, around({238, 190, 58}, 14, random));
    }
}

void paintMeal(Canvas& canvas, Random& random) {
    constexpr std::array<Colour, 4> tables = {{{150, 106, 70}, {92, 70, 60}, {196, 200, 204}, {70, 96, 104}}};
    const Colour table = oneOf(tables, random);
    canvas.box(all(canvas), table);
    for (int y = random.between(0, 20); y < canvas.height(); y += random.between(16, 34))
        canvas.box({0, y, canvas.width(), y + 1}, between(table, black, 35));
    const int x = canvas.width() / 2 + random.between(-24, 24);
    const int y = canvas.height() / 2 + random.between(-14, 14);
    const int radius = random.between(58, 78);
    canvas.disc(x + 4, y + 6, radius, between(table, black, 50));
    canvas.disc(x, y, radius, around({240, 238, 232}, 12, random));
    canvas.disc(x, y, radius * 3 / 4, around({226, 224, 218}, 10, random));
    constexpr std::array<Colour, 6> foods = {
        {{200, 60, 44}, {104, 146, 52}, {232, 176, 70}, {140, 84, 48}, {248, 226, 170}, {226, 120, 50}}};
    for (int piece = random.between(9, 18); piece > 0; --piece)
        canvas.ellipse(x + random.between(-radius / 2, radius / 2),
                       y + random.between(-radius / 2, radius / 2), random.between(6, 17),
                       random.between(5, 13), oneOf(foods, random));
}

void paintPortrait(Canvas& canvas, Random& random) {
    const Colour back = around({140, 150, 160}, 70, random);
    canvas.gradient(all(canvas), between(back, white, 25), between(back, black, 30));
    constexpr std::array<Colour, 5> skins = {
        {{244, 206, 178}, {226, 174, 138}, {186, 128, 92}, {134, 86, 60}, {88, 56, 42}}};
    constexpr std::array<Colour, 5> hairs = {
        {{40, 28, 22}, {104, 66, 36}, {214, 174, 104}, {150, 150, 152}, {138, 58, 30}}};
    const Colour skin = oneOf(skins, random);
    const Colour hair = oneOf(hairs, random);
    const int x = canvas.width() / 2 + random.between(-14, 14);
    const int y = canvas.height() * 2 / 5 + random.between(-10, 10);
    const int size = random.between(38, 48);
    const int length = random.chance(50) ? size / 3 : size; // of the hair
    canvas.ellipse(x, y - 4 + length / 2, size + 8, size + length / 2, hair);
    canvas.ellipse(x, canvas.height() + 6, size * 2, size + 40, around({90, 90, 130}, 80, random));
    canvas.box({x - size / 3, y + size / 2, x + size / 3, y + size * 3 / 2}, between(skin, black, 14));
    canvas.ellipse(x, y + 4, size * 4 / 5, size, skin);
    canvas.ellipse(x + random.between(-8, 8), y - size * 3 / 4, size * 4 / 5, size / 2, hair);
    for (const int eye : {x - size / 3, x + size / 3}) {
        canvas.ellipse(eye, y + 2, 6, 4, white);
        canvas.disc(eye, y + 2, 3, black);
        canvas.box({eye - 7, y - 7, eye + 7, y - 5}, between(hair, black, 20));
    }
    canvas.ellipse(x, y + size / 3 + 1, 4, 6, between(skin, black, 16));
    canvas.ellipse(x, y + size * 2 / 3, random.between(9, 15), random.between(2, 5),
                   around({178, 66, 70}, 18, random));
}

/// Lines as of text, each of words, and how far down they reach.
int paintText(Canvas& canvas, Box box, int lineHeight, Colour ink, Random& random) {
    int y = box.top;
    for (; y + lineHeight <= box.bottom; y += lineHeight) {
        const int end = box.right - (box.right - box.left) * random.between(0, 45) / 100;
        for (int x = box.left; x < end;) {
            const int word = random.between(5, 19);
            canvas.box({x, y, std::min(x + word, end), y + lineHeight / 2}, ink);
            x += word + 3;
        }
    }
    return y;
}

void paintReceipt(Canvas& canvas, Random& random) {
    const Colour desk = around({112, 84, 62}, 40, random);
    canvas.gradient(all(canvas), between(desk, white, 12), between(desk, black, 22));
    const int left = random.between(34, 52);
    const int right = canvas.width() - random.between(34, 52);
    const int top = random.between(8, 26);
    const int bottom = canvas.height() - random.between(6, 40);
    canvas.box({left + 4, top + 5, right + 4, bottom + 5}, between(desk, black, 50));
    canvas.gradient({left, top, right, bottom}, white, around({226, 224, 216}, 8, random));
    const int middle = (left + right) / 2;
    const int name = random.between(18, 32);
    canvas.box({middle - name, top + 9, middle + name, top + 17}, around({60, 60, 70}, 30, random));
    constexpr Colour ink = {118, 118, 122};
    const int columns = right - 26;
    const int total = paintText(canvas, {left + 8, top + 28, columns - 8, bottom - 42}, 9, ink, random);
    for (int y = top + 28; y < total; y += 9)
        canvas.box({columns + random.between(0, 6), y, right - 8, y + 4}, ink);
    canvas.box({left + 8, total + 2, right - 8, total + 3}, black);
    canvas.box({left + 8, total + 8, left + 34, total + 15}, black);
    canvas.box({columns - 10, total + 8, right - 8, total + 15}, black);
    for (int bar = left + 10; bar < right - 12; bar += random.between(3, 6))
        canvas.box({bar, bottom - 16, bar + random.between(1, 2), bottom - 5}, black);
}

void paintScreenshot(Canvas& canvas, Random& random) {
    canvas.gradient(all(canvas), around({90, 90, 170}, 60, random), around({170, 90, 130}, 60, random));
    const bool dark = random.chance(35);
    const Colour page = dark ? Colour{36, 38, 44} : white;
    const Colour ink = dark ? Colour{150, 152, 160} : Colour{104, 106, 114};
    const Box window = {random.between(10, 26), random.between(10, 22),
                        canvas.width() - random.between(8, 24), canvas.height() - random.between(8, 22)};
    canvas.box({window.left + 3, window.top + 5, window.right + 3, window.bottom + 5}, {40, 36, 60});
    canvas.box(window, page);
    canvas.box({window.left, window.top, window.right, window.top + 15}, between(page, ink, 25));
    constexpr std::array<Colour, 3> buttons = {{{236, 96, 86}, {244, 190, 72}, {98, 198, 92}}};
    for (int button = 0; button < 3; ++button)
        canvas.disc(window.left + 9 + 11 * button, window.top + 7, 3,
                    buttons[static_cast<std::size_t>(button)]);
    const int side = window.left + random.between(44, 66);
    canvas.box({window.left, window.top + 15, side, window.bottom}, between(page, ink, 14));
    paintText(canvas, {window.left + 7, window.top + 24, side - 8, window.bottom - 6}, 11, ink, random);
    int y = window.top + 24;
    if (random.chance(60)) {
        const int height = random.between(30, 54);
        canvas.gradient({side + 10, y, window.right - 10, y + height}, around({80, 150, 200}, 60, random),
                        around({220, 180, 140}, 30, random));
        y += height + 8;
    }
    paintText(canvas, {side + 10, y, window.right - 10, window.bottom - 6}, 8, ink, random);
}

} // namespace

Canvas paint(Scene scene, Random& random) {
    constexpr std::array painters = {paintShore, paintHills,    paintNight,   paintBlossom,
                                     paintMeal,  paintPortrait, paintReceipt, paintScreenshot};
    const PictureSize size = sizeOf(scene);
    Canvas canvas(size.width, size.height);
    painters[static_cast<std::size_t>(scene)](canvas, random);
    return canvas;
}

} // namespace SampleDisk
