#include "platform/pictures/icon_file.h"

#include "tests/support/temporary_disk.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

/// The four bytes of a number, the most significant first.
std::string bytesOf(std::size_t number) {
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

std::string block(const std::string& type, const std::string& content) {
    return type + bytesOf(content.size() + 8) + content;
}

/// A block that begins like a PNG file of this side.
std::string png(const std::string& type, std::size_t side) {
    return block(type, "\x89PNG\r\n\x1A\n\0\0\0\x0DIHDR"s + bytesOf(side) + bytesOf(side));
}

std::string jpeg2000(const std::string& type) {
    return block(type, "\0\0\0\x0CjP  \r\n\x87\n"s);
}

/// A compressed channel of `count` times the same value; `count` must be a multiple of 128.
std::string plane(int count, char value) {
    std::string runs;
    for (; count > 0; count -= 128)
        runs += "\xFD"s + value;
    return runs;
}

const std::string mask(256, '\x40');
const std::string rgb = plane(256, 1) + plane(256, 2) + plane(256, 3);
const std::string argb = "ARGB" + plane(256, 4) + rgb;

/// An icon file as it is found on a disk.
class Icon {
public:
    explicit Icon(std::string_view bytes) { m_disk.write("~/icon", bytes); }

    /// Returns the format of the chosen picture and its side, or "none".
    std::string chosen(int side) const {
        const auto picture = platform::findIconPicture(file(), side);
        using enum platform::IconPicture::Format;
        return !picture ? "none"
                        : (picture->format == png    ? "png "
                           : picture->format == argb ? "argb "
                                                     : "rgb ")
                              + std::to_string(picture->side);
    }

    std::vector<std::uint32_t> pixels() const {
        const auto picture = platform::findIconPicture(file(), 16);
        return picture ? platform::readIconPixels(file(), *picture) : std::vector<std::uint32_t>();
    }

private:
    platform::Descriptor file() const {
        auto opened = m_disk.disk().openFile(at("~/icon"));
        return opened ? std::move(*opened) : platform::Descriptor();
    }

    TemporaryDisk m_disk;
};

} // namespace

TEST(IconFile, ChoosesThePictureThatSuitsTheSide) {
    const std::string pngs = png("ic07", 128) + png("ic12", 64) + png("ic11", 32) + png("ic10", 1024);
    const std::tuple<std::string, int, const char*> cases[]{
        {pngs, 32, "png 32"},
        {pngs, 33, "png 64"},
        {pngs, 129, "png 1024"},
        {pngs, 2000, "png 1024"},
        {block("TOC ", "ic10") + block("name", "icon") + pngs, 64, "png 64"},
        {block("is32", rgb) + jpeg2000("ic08") + block("ic04", argb), 64, "rgb 16"},
        {jpeg2000("ic08") + png("ic04", 16) + block("il32", "\0\0\0\x0CjP  "s), 64, "png 16"},
        {png("ic07", 100'000) + png("ic08", 0) + block("abcd", argb), 64, "none"}, // sides out of range
        {jpeg2000("ic08"), 64, "none"},
    };
    for (const auto& [blocks, side, expected] : cases)
        EXPECT_EQ(Icon(block("icns", blocks)).chosen(side), expected) << side;
}

TEST(IconFile, DecodesBothFormatsWithoutAHeader) {
    const std::tuple<std::string, std::uint32_t> cases[]{
        {block("ic04", argb), 0x04010203},
        {block("ic04", "ARGB\x7F" + std::string(128, '\7') + plane(128, 7) + rgb), 0x07010203},
        {block("is32", rgb), 0xFF010203},
        {block("s8mk", mask) + block("is32", rgb), 0x40010203},
        {block("is32", rgb) + block("l8mk", mask) + block("s8mk", "x"), 0xFF010203}, // not its masks
    };
    for (const auto& [blocks, expected] : cases)
        EXPECT_EQ(Icon(block("icns", blocks)).pixels(), std::vector<std::uint32_t>(256, expected))
            << expected;
    const std::string large = "abcd" + plane(16'384, 1) + plane(16'384, 2) + plane(16'256, 3) + plane(128, 9);
    EXPECT_EQ(Icon(block("icns", block("it32", large))).pixels().back(), 0xFF010209);
}

TEST(IconFile, SurvivesHostileFiles) {
    std::string many;
    for (int i = 0; i < 10'000; ++i)
        many += block("abcd", "");
    std::string nested = block("is32", rgb);
    for (int i = 0; i < 1'000; ++i)
        nested = block("icns", nested);
    const std::pair<const char*, std::string> files[]{
        {"empty", ""},
        {"no blocks", "icns"},
        {"another format", "\x89PNG\r\n\x1A\n"},
        {"a block without a length", "icns\0\0\0\x10is32\0\0\0\0"s},
        {"a block of 4 GB", "icns\xFF\xFF\xFF\xFFis32\xFF\xFF\xFF\xFF\xFF"},
        {"a truncated header", "icns\0\0\0\x10is3"s},
        {"a truncated PNG", block("icns", block("ic07", "\x89PNG\r\n\x1A\n"))},
        {"10,000 blocks before the picture", block("icns", many + block("is32", rgb))},
        {"nested files", nested},
        {"no pixels", block("icns", block("ic04", "ARGB"))},
        {"a run beyond the picture", block("icns", block("is32", rgb.substr(0, rgb.size() - 2) + "\xFF\1"))},
        {"a run without its byte", block("icns", block("is32", rgb.substr(0, rgb.size() - 1)))},
        {"bytes that are missing", block("icns", block("is32", rgb.substr(0, 10) + "\x7F\1\2"))},
    };
    for (const auto& [what, bytes] : files)
        EXPECT_TRUE(Icon(bytes).pixels().empty()) << what;
}
