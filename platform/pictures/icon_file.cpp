#include "platform/pictures/icon_file.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

#include <unistd.h>

namespace platform {

namespace {

using namespace std::string_view_literals;

/// A type of block whose content has no header with its size.
struct RawType {
    std::string_view name;
    int side; ///< in pixels
};

constexpr RawType argbTypes[] = {{"ic04", 16}, {"icsb", 18}, {"sb24", 24}, {"ic05", 32},
                                 {"ic11", 32}, {"icsB", 36}, {"SB24", 48}};
constexpr RawType rgbTypes[] = {{"is32", 16}, {"icp4", 16}, {"il32", 32},
                                {"icp5", 32}, {"ih32", 48}, {"it32", 128}};
constexpr RawType maskTypes[] = {{"s8mk", 16}, {"l8mk", 32}, {"h8mk", 48}, {"t8mk", 128}};

constexpr std::string_view argbStart = "ARGB";
constexpr std::string_view pngStart = "\x89PNG\r\n\x1A\n"sv;
constexpr std::string_view jpeg2000Starts[] = {"\0\0\0\x0CjP"sv, "\xFF\x4F\xFF\x51"sv};

/// Content from which the format of a block is recognized.
constexpr std::int64_t startLength = 24;

/// Returns the side of pictures of a type; 0 if the table does not have it.
template <std::size_t count>
int sideOf(std::string_view type, const RawType (&types)[count]) {
    for (const RawType& raw : types)
        if (raw.name == type)
            return raw.side;
    return 0;
}

/// Decodes a big-endian unsigned integer.
std::int64_t number(std::string_view bytes) {
    std::int64_t value = 0;
    for (const char byte : bytes)
        value = value * 256 + static_cast<unsigned char>(byte);
    return value;
}

/// Returns less than the part if the file is shorter or cannot be read.
std::string read(const Descriptor& file, FilePart part) {
    std::string bytes(static_cast<std::size_t>(part.length), '\0');
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t length = pread(file.number(), bytes.data() + done, bytes.size() - done,
                                     part.offset + static_cast<std::int64_t>(done));
        if (length < 0 && errno == EINTR)
            continue;
        if (length <= 0)
            break;
        done += static_cast<std::size_t>(length);
    }
    bytes.resize(done);
    return bytes;
}

/// Returns the picture in a block with this content, without its mask.
std::optional<IconPicture> recognized(std::string_view type, std::string_view start, FilePart content) {
    constexpr std::int64_t maxSide = 1024;
    if (start.starts_with(pngStart)) {
        if (start.size() < startLength)
            return std::nullopt;
        const std::int64_t side = std::max(number(start.substr(16, 4)), number(start.substr(20, 4)));
        if (side == 0 || side > maxSide)
            return std::nullopt;
        return IconPicture{IconPicture::Format::png, static_cast<int>(side), content};
    }
    if (start.starts_with(argbStart)) {
        const int side = sideOf(type, argbTypes);
        return side == 0 ? std::nullopt
                         : std::optional(IconPicture{IconPicture::Format::argb, side, content});
    }
    const bool isJpeg2000 = std::any_of(std::begin(jpeg2000Starts), std::end(jpeg2000Starts),
                                        [&](std::string_view bytes) { return start.starts_with(bytes); });
    const int side = isJpeg2000 ? 0 : sideOf(type, rgbTypes);
    return side == 0 ? std::nullopt : std::optional(IconPicture{IconPicture::Format::rgb, side, content});
}

/// Returns true if `a` suits a square of `side` pixels better than `b`.
bool isBetter(const IconPicture& a, const IconPicture& b, int side) {
    return a.side >= side ? b.side < side || a.side < b.side : a.side > b.side;
}

/// Decompresses exactly `size` bytes. A first byte below 128 stands for that number of bytes and one more,
/// which follow; any other for 3 to 130 times the next byte. Returns nothing if the data is damaged.
std::string unpacked(std::string_view data, std::size_t size) {
    constexpr std::size_t firstRepeat = 128;
    constexpr std::size_t minRepeats = 3;
    std::string result;
    while (result.size() < size) {
        if (data.empty())
            return {};
        const std::size_t code = static_cast<unsigned char>(data.front());
        data.remove_prefix(1);
        const bool isRepeat = code >= firstRepeat;
        const std::size_t length = isRepeat ? code - firstRepeat + minRepeats : code + 1;
        const std::size_t consumed = isRepeat ? 1 : length;
        if (consumed > data.size() || length > size - result.size())
            return {};
        if (isRepeat)
            result.append(length, data.front());
        else
            result.append(data.substr(0, length));
        data.remove_prefix(consumed);
    }
    return result;
}

} // namespace

std::optional<IconPicture> findIconPicture(const Descriptor& file, int side) {
    // A block is a type of four letters, the length with this header, and the content. The file itself is a
    // block that holds the others.
    constexpr std::int64_t headerLength = 8;
    constexpr int maxBlocks = 100; // real files have some twenty
    if (!read(file, {0, headerLength}).starts_with("icns"))
        return std::nullopt;
    std::optional<IconPicture> best;
    std::vector<std::pair<int, FilePart>> masks;
    std::int64_t at = headerLength;
    for (int block = 0; block < maxBlocks; ++block) {
        const std::string bytes = read(file, {at, headerLength + startLength});
        if (bytes.size() < headerLength)
            break;
        const std::string_view type = std::string_view(bytes).substr(0, 4);
        const std::int64_t length = number(std::string_view(bytes).substr(4, 4));
        if (length < headerLength)
            break;
        const FilePart content{at + headerLength, length - headerLength};
        const std::string_view start =
            std::string_view(bytes).substr(headerLength, static_cast<std::size_t>(content.length));
        if (const int maskSide = sideOf(type, maskTypes); maskSide != 0)
            masks.emplace_back(maskSide, content);
        else if (const auto picture = recognized(type, start, content);
                 picture && (!best || isBetter(*picture, *best, side)))
            best = picture;
        at += length;
    }
    if (best && best->format == IconPicture::Format::rgb)
        for (const auto& [maskSide, content] : masks)
            if (maskSide == best->side)
                best->mask = content;
    return best;
}

std::vector<std::uint32_t> readIconPixels(const Descriptor& file, const IconPicture& picture) {
    const bool isArgb = picture.format == IconPicture::Format::argb;
    const std::size_t count = static_cast<std::size_t>(picture.side) * static_cast<std::size_t>(picture.side);
    const std::size_t channels = isArgb ? 4 : 3;
    // Runs of one byte each, the longest form that data can have.
    const auto maxLength = static_cast<std::int64_t>(argbStart.size() + 2 * channels * count);
    const std::string content =
        read(file, {picture.content.offset, std::min(picture.content.length, maxLength)});
    // The largest pictures begin with four bytes without a meaning.
    const std::size_t begin = isArgb || picture.side == 128 ? argbStart.size() : 0;
    const std::string planes =
        unpacked(std::string_view(content).substr(std::min(begin, content.size())), channels * count);
    if (planes.empty())
        return {};
    std::vector<std::uint32_t> pixels(count, isArgb ? 0 : 0xFF);
    for (std::size_t i = 0; i < planes.size(); ++i) // one channel after the other
        pixels[i % count] = pixels[i % count] << 8 | static_cast<unsigned char>(planes[i]);
    if (picture.mask.length == static_cast<std::int64_t>(count)) {
        const std::string mask = read(file, picture.mask);
        for (std::size_t i = 0; i < mask.size(); ++i)
            pixels[i] = (pixels[i] & 0xFFFFFF)
                        | static_cast<std::uint32_t>(static_cast<unsigned char>(mask[i])) << 24;
    }
    return pixels;
}

} // namespace platform
