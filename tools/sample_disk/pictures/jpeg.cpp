#include "tools/sample_disk/pictures/bytes.h"
#include "tools/sample_disk/pictures/formats.h"

#include <array>
#include <bit>
#include <cstdlib>
#include <string_view>

namespace SampleDisk {

namespace {

constexpr int side = 8; // of a block
using Block = std::array<int, std::size_t{side} * side>;

/// Where in a block its coefficients lie, in the order in which they are written: diagonal by diagonal.
constexpr std::array<int, 64> zigzag = [] {
    std::array<int, 64> order{};
    std::size_t next = 0;
    for (int diagonal = 0; diagonal < 2 * side - 1; ++diagonal) {
        for (int step = 0; step <= diagonal; ++step) {
            const int row = diagonal % 2 == 0 ? diagonal - step : step;
            if (row < side && diagonal - row < side)
                order[next++] = row * side + diagonal - row;
        }
    }
    return order;
}();

/// What coefficients are divided by: the finer the detail, the coarser.
constexpr Block divisors(int first, int slope) {
    Block table{};
    for (int i = 0; i < side * side; ++i)
        table[static_cast<std::size_t>(i)] = first + slope * (i / side + i % side);
    return table;
}
constexpr Block lightDivisors = divisors(5, 4);
constexpr Block tintDivisors = divisors(8, 8);

/// A prefix code: how many symbols have each length of 1 to 16 bits, and the symbols, shortest first.
struct Code {
    std::array<std::uint8_t, 16> counts{};
    std::array<std::uint8_t, 162> symbols{};
    std::size_t size = 0;
    std::array<std::uint16_t, 256> words{}; ///< of each symbol
    std::array<std::uint8_t, 256> lengths{};

    constexpr void add(int symbol, std::uint8_t length) {
        symbols[size++] = static_cast<std::uint8_t>(symbol);
        lengths[static_cast<std::size_t>(symbol)] = length;
        ++counts[length - 1U];
    }

    constexpr void number() {
        unsigned word = 0;
        for (std::size_t i = 0; i < size; ++i) {
            if (i > 0)
                word = (word + 1) << (lengths[symbols[i]] - lengths[symbols[i - 1]]);
            words[symbols[i]] = static_cast<std::uint16_t>(word);
        }
    }
};

/// The first value of each block, as its difference from the last block's: a symbol is the number of bits.
constexpr Code firstCode = [] {
    Code code;
    for (int bits = 0; bits < 12; ++bits)
        code.add(bits, 4);
    code.number();
    return code;
}();

/// The others: a symbol is sixteen times the zeros before a value, plus the number of its bits. Soft pictures
/// use few of them, which a code of three lengths serves nearly as well as one that is made to measure.
constexpr Code restCode = [] {
    constexpr std::array<int, 7> frequent = {0x01, 0x02, 0x03, 0x11, 0x12, 0x21, 0x31};
    Code code;
    code.add(0x00, 2); // nothing but zeros is left
    for (const int symbol : frequent)
        code.add(symbol, 4);
    for (int symbol = 1; symbol <= 0xFA; ++symbol) {
        const int bits = symbol % 16;
        const bool used = (bits >= 1 && bits <= 10) || symbol == 0xF0;
        if (used && code.lengths[static_cast<std::size_t>(symbol)] == 0)
            code.add(symbol, 9);
    }
    code.number();
    return code;
}();

constexpr int one = 4'096; // the cosines are in parts of it

/// The rows of the cosine transform, but for a factor of one half.
constexpr std::array<std::array<int, 4>, side> cosines = [] {
    constexpr std::array<int, 9> ofSixteenths = {one, 4'017, 3'784, 3'406, 2'896, 2'276, 1'567, 799, 0};
    std::array<std::array<int, 4>, side> table{};
    for (std::size_t row = 0; row < side; ++row) {
        for (std::size_t column = 0; column < 4; ++column) {
            std::size_t angle = (2 * column + 1) * row % 32; // in sixteenths of a half turn
            angle = angle > 16 ? 32 - angle : angle;
            table[row][column] = angle > 8 ? -ofSixteenths[16 - angle] : ofSixteenths[angle];
        }
    }
    table[0] = {2'896, 2'896, 2'896, 2'896};
    return table;
}();

/// The second half of an even row mirrors the first, that of an odd one is its negative.
void transformLine(int* line, std::size_t step, int shift) {
    std::array<int, 4> sums{};
    std::array<int, 4> differences{};
    for (std::size_t i = 0; i < 4; ++i) {
        sums[i] = line[i * step] + line[(7 - i) * step];
        differences[i] = line[i * step] - line[(7 - i) * step];
    }
    for (std::size_t row = 0; row < side; ++row) {
        const std::array<int, 4>& half = row % 2 == 0 ? sums : differences;
        int sum = 0;
        for (std::size_t i = 0; i < 4; ++i)
            sum += cosines[row][i] * half[i];
        line[row * step] = sum >> shift;
    }
}

class Writer {
public:
    explicit Writer(std::string& file) : m_file(file) {}

    /// Writes a block; `last` is the first value of the one before of its kind, and becomes this one's.
    void block(Block& block, const Block& table, int& last) {
        for (std::size_t i = 0; i < side; ++i)
            transformLine(&block[i * side], 1, 10);
        for (std::size_t i = 0; i < side; ++i)
            transformLine(&block[i], side, 2);
        // Both passes have left a factor of 4,096 and two halves of their own.
        const auto value = [&](std::size_t i) {
            const auto at = static_cast<std::size_t>(zigzag[i]);
            const int divisor = table[at] << 14;
            return (std::abs(block[at]) + divisor / 2) / divisor * (block[at] < 0 ? -1 : 1);
        };
        const int first = value(0);
        number(firstCode, 0, first - last);
        last = first;
        int zeros = 0;
        for (std::size_t i = 1; i < zigzag.size(); ++i) {
            const int next = value(i);
            if (next == 0) {
                ++zeros;
                continue;
            }
            for (; zeros > 15; zeros -= 16)
                word(restCode, 0xF0);
            number(restCode, 16 * zeros, next);
            zeros = 0;
        }
        if (zeros > 0)
            word(restCode, 0x00);
    }

    void finish() { bits(0x7F, 7); } // fills the last byte with ones

private:
    void number(const Code& code, int symbol, int value) {
        const int length = std::bit_width(static_cast<unsigned>(std::abs(value)));
        word(code, symbol + length);
        bits(static_cast<unsigned>(value < 0 ? value - 1 : value) & ((1U << length) - 1), length);
    }

    void word(const Code& code, int symbol) {
        const auto at = static_cast<std::size_t>(symbol);
        bits(code.words[at], code.lengths[at]);
    }

    void bits(unsigned value, int length) {
        m_pending = m_pending << length | value;
        m_pendingLength += length;
        for (; m_pendingLength >= 8; m_pendingLength -= 8) {
            const auto byte = static_cast<char>(m_pending >> (m_pendingLength - 8));
            m_file += byte;
            if (byte == '\xFF')
                m_file += '\0'; // or it would begin a marker
        }
    }

    std::string& m_file;
    unsigned m_pending = 0;
    int m_pendingLength = 0;
};

void appendSegment(std::string& file, int marker, std::string_view content) {
    append(file, 0xFF00U + static_cast<unsigned>(marker), 2);
    append(file, static_cast<std::uint32_t>(content.size() + 2), 2);
    file += content;
}

std::string written(char number, const Block& table) {
    std::string content(1, number);
    for (const int at : zigzag)
        content += static_cast<char>(table[static_cast<std::size_t>(at)]);
    return content;
}

std::string written(char number, const Code& code) {
    std::string content(1, number);
    content.append(code.counts.begin(), code.counts.end());
    content.append(code.symbols.begin(), code.symbols.begin() + code.size);
    return content;
}

/// A square of 16 by 16 pixels: four blocks of light, and the two of its tints at half the size.
struct Square {
    std::array<Block, 4> light{};
    Block blueness{};
    Block redness{};
};

void read(const Canvas& picture, int left, int top, Square& square) {
    square.blueness.fill(0);
    square.redness.fill(0);
    for (int y = 0; y < 2 * side; ++y) {
        for (int x = 0; x < 2 * side; ++x) {
            const Colour colour = picture.at(left + x, top + y);
            const int red = colour.red;
            const int green = colour.green;
            const int blue = colour.blue;
            const auto at = static_cast<std::size_t>(y % side * side + x % side);
            square.light[static_cast<std::size_t>(y / side * 2 + x / side)][at] =
                ((77 * red + 150 * green + 29 * blue) >> 8) - 128;
            const auto tint = static_cast<std::size_t>(y / 2 * side + x / 2);
            square.blueness[tint] += 128 * blue - 43 * red - 85 * green;
            square.redness[tint] += 128 * red - 107 * green - 21 * blue;
        }
    }
    for (Block* const tint : {&square.blueness, &square.redness})
        for (int& value : *tint)
            value >>= 10; // four pixels, each in parts of 256
}

} // namespace

std::string jpeg(const Canvas& picture) {
    std::string frame = "\x08"; // bits
    append(frame, static_cast<std::uint32_t>(picture.height()), 2);
    append(frame, static_cast<std::uint32_t>(picture.width()), 2);
    append(frame, 3, 1);
    // Of each part: its number, how many blocks of a square are its own, its divisors.
    for (const std::uint32_t part : {0x01'22'00, 0x02'11'01, 0x03'11'01})
        append(frame, part, 3);
    std::string scan = "\x03";
    for (const std::uint32_t part : {0x01'00, 0x02'00, 0x03'00}) // all by the same two codes
        append(scan, part, 2);
    append(scan, 0x00'3F'00, 3); // all coefficients in one go

    std::string file = "\xFF\xD8";
    appendSegment(file, 0xE0, {"JFIF\0\1\1\0\0\1\0\1\0\0", 14});
    appendSegment(file, 0xDB, written(0, lightDivisors));
    appendSegment(file, 0xDB, written(1, tintDivisors));
    appendSegment(file, 0xC0, frame);
    appendSegment(file, 0xC4, written(0x00, firstCode));
    appendSegment(file, 0xC4, written(0x10, restCode));
    appendSegment(file, 0xDA, scan);

    Writer writer(file);
    Square square;
    int light = 0;
    int blueness = 0;
    int redness = 0;
    for (int top = 0; top < picture.height(); top += 2 * side) {
        for (int left = 0; left < picture.width(); left += 2 * side) {
            read(picture, left, top, square);
            for (Block& block : square.light)
                writer.block(block, lightDivisors, light);
            writer.block(square.blueness, tintDivisors, blueness);
            writer.block(square.redness, tintDivisors, redness);
        }
    }
    writer.finish();
    file += "\xFF\xD9";
    return file;
}

} // namespace SampleDisk
