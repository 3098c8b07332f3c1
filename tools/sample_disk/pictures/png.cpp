#include "tools/sample_disk/pictures/bytes.h"
#include "tools/sample_disk/pictures/formats.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace SampleDisk {

namespace {

constexpr std::array<std::uint32_t, 256> remainders = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t remainder = byte;
        for (int bit = 0; bit < 8; ++bit)
            remainder = (remainder >> 1) ^ ((remainder & 1) != 0 ? 0xEDB88320 : 0);
        table[byte] = remainder;
    }
    return table;
}();

std::uint32_t crc32(std::string_view bytes) {
    std::uint32_t remainder = ~std::uint32_t{0};
    for (const char byte : bytes)
        remainder = remainders[(remainder ^ static_cast<unsigned char>(byte)) & 255] ^ (remainder >> 8);
    return ~remainder;
}

std::uint32_t adler32(std::string_view bytes) {
    constexpr std::uint32_t modulus = 65'521;
    std::uint32_t sum = 1;
    std::uint32_t sumOfSums = 0;
    for (const char byte : bytes) {
        sum = (sum + static_cast<unsigned char>(byte)) % modulus;
        sumOfSums = (sumOfSums + sum) % modulus;
    }
    return sumOfSums << 16 | sum;
}

void appendChunk(std::string& file, std::string_view type, std::string_view content) {
    append(file, static_cast<std::uint32_t>(content.size()), 4);
    const std::size_t checked = file.size();
    file += type;
    file += content;
    append(file, crc32(std::string_view(file).substr(checked)), 4);
}

/// A zlib stream of stored blocks.
std::string stored(std::string_view bytes) {
    std::string stream = "\x78\x01";
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t length = std::min<std::size_t>(bytes.size() - at, 65'535);
        stream += at + length == bytes.size() ? '\1' : '\0';
        for (const std::size_t number : {length, ~length}) { // lowest byte first, unlike all else here
            stream += static_cast<char>(number);
            stream += static_cast<char>(number >> 8);
        }
        stream += bytes.substr(at, length);
        at += length;
    }
    append(stream, adler32(bytes), 4);
    return stream;
}

} // namespace

std::string png(const Canvas& picture) {
    std::string header;
    append(header, static_cast<std::uint32_t>(picture.width()), 4);
    append(header, static_cast<std::uint32_t>(picture.height()), 4);
    append(header, 0x08020000, 4); // eight bits of red, green and blue
    append(header, 0, 1);          // not interlaced

    std::string rows;
    for (int y = 0; y < picture.height(); ++y) {
        rows += '\0'; // not filtered
        for (int x = 0; x < picture.width(); ++x) {
            const Colour colour = picture.at(x, y);
            for (const std::uint8_t part : {colour.red, colour.green, colour.blue})
                rows += static_cast<char>(part);
        }
    }

    std::string file = "\x89PNG\r\n\x1A\n";
    appendChunk(file, "IHDR", header);
    appendChunk(file, "IDAT", stored(rows));
    appendChunk(file, "IEND", {});
    return file;
}

} // namespace SampleDisk
