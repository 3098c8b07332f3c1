#include "platform/pictures/icon_file.h"

#include "tests/support/temporary_disk.h"

#include <cstdint>
#include <cstdio>
#include <string>
#include <tuple>
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

/// A compressed channel of `count` times the same value; `count` must be a multiple of 128.
std::string plane(int count, char value) {
    std::string runs;
    for (; count > 0; count -= 128)
        runs += "\xFD"s + value;
    return runs;
}

const std::string rgb = plane(256, 1) + plane(256, 2) + plane(256, 3);
const std::string argb = "ARGB" + plane(256, 4) + rgb;

/// Returns the chosen picture of an icon file: the side of a PNG, or the number of pixels and the last one.
std::string decoded(const std::string& bytes, int side = 16) {
    const TemporaryDisk disk;
    disk.write("~/icon", bytes);
    const auto file = disk.disk().openFile(at("~/icon"));
    const auto picture = platform::findIconPicture(*file, side);
    if (!picture || picture->format == platform::IconPicture::Format::png)
        return picture ? "PNG " + std::to_string(picture->side) : "none";
    const std::vector<std::uint32_t> pixels = platform::readIconPixels(*file, *picture);
    char text[32] = "damaged";
    if (!pixels.empty())
        std::snprintf(text, sizeof text, "%zu %08X", pixels.size(), pixels.back());
    return text;
}

} // namespace

TEST(IconFile, GivesThePictureThatSuitsTheSide) {
    const std::string pngs = png("ic07", 128) + png("ic12", 64) + png("ic11", 32) + png("ic10", 1024);
    const std::string jpeg2000 = "\0\0\0\x0CjP  \r\n\x87\n"s;
    const std::string mask(256, '\x40');
    const std::string large = "abcd" + plane(16'384, 1) + plane(16'384, 2) + plane(16'256, 3) + plane(128, 9);
    const std::tuple<std::string, int, const char*> cases[]{
        {pngs, 32, "PNG 32"},
        {pngs, 33, "PNG 64"},
        {pngs, 2000, "PNG 1024"},
        {block("TOC ", "ic10") + block("name", "icon") + pngs, 64, "PNG 64"},
        {block("ic08", jpeg2000) + png("ic04", 16) + block("il32", jpeg2000), 64, "PNG 16"},
        {png("ic07", 100'000) + png("ic08", 0) + block("abcd", argb) + block("ic08", jpeg2000), 64, "none"},
        {block("ic04", argb), 64, "256 04010203"},
        {block("ic04", "ARGB\x7F" + std::string(128, '\7') + plane(128, 7) + rgb), 64, "256 07010203"},
        {block("s8mk", mask) + block("is32", rgb) + block("ic08", jpeg2000), 64, "256 40010203"},
        {block("is32", rgb) + block("l8mk", mask) + block("s8mk", "x"), 64, "256 FF010203"}, // not its masks
        {block("it32", large), 64, "16384 FF010209"},
    };
    for (const auto& [blocks, side, expected] : cases)
        EXPECT_EQ(decoded(block("icns", blocks), side), expected);
}

TEST(IconFile, SurvivesHostileFiles) {
    std::string many;
    for (int i = 0; i < 10'000; ++i)
        many += block("abcd", "");
    const std::tuple<const char*, std::string, const char*> files[]{
        {"empty", "", "none"},
        {"another format", png("", 16), "none"},
        {"a block without a length", "icns\0\0\0\x10is32\0\0\0\0"s, "none"},
        {"a block of 4 GB", "icns\xFF\xFF\xFF\xFFis32\xFF\xFF\xFF\xFF\xFF", "damaged"},
        {"a truncated header", "icns\0\0\0\x10is3"s, "none"},
        {"a truncated PNG", block("icns", block("ic07", "\x89PNG\r\n\x1A\n")), "none"},
        {"10,000 blocks", block("icns", many + block("is32", rgb)), "none"},
        {"a file in the file", block("icns", block("icns", block("is32", rgb))), "none"},
        {"no pixels", block("icns", block("ic04", "ARGB")), "damaged"},
        {"a run beyond the end", block("icns", block("is32", rgb.substr(0, 10) + "\xFF\1")), "damaged"},
        {"a run that is too long", block("icns", block("is32", rgb.substr(2) + "\xFF\1")), "damaged"},
        {"a run without its byte", block("icns", block("is32", rgb.substr(0, rgb.size() - 1))), "damaged"},
    };
    for (const auto& [what, bytes, expected] : files)
        EXPECT_EQ(decoded(bytes), expected) << what;
}
