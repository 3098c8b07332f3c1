#include "ui/thumbnails/picture_file.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace std::string_view_literals;

/// Some decoders keep the whole file in memory. The library has small renditions of larger originals.
constexpr qint64 maxBytes = 64'000'000;

struct Signature {
    const char* format;
    qsizetype offset;
    std::string_view bytes;
};

// Selects the decoder explicitly. With automatic detection Qt would offer the file to every installed plugin,
// some of which read further files.
constexpr Signature signatures[] = {
    {"jpeg", 0, "\xFF\xD8\xFF"sv}, {"png", 0, "\x89PNG\r\n\x1A\n"sv},
    {"gif", 0, "GIF8"sv},          {"bmp", 0, "BM"sv},
    {"webp", 8, "WEBPVP8"sv},      {"tiff", 0, "II*\0"sv},
    {"tiff", 0, "MM\0*"sv},        {"heic", 4, "ftypheic"sv},
    {"heic", 4, "ftypheix"sv},     {"heic", 4, "ftypmif1"sv},
};

QByteArray formatOf(std::string_view start) {
    for (const auto& [format, offset, bytes] : signatures)
        if (start.substr(std::min(static_cast<std::size_t>(offset), start.size())).starts_with(bytes))
            return format;
    return {};
}

/// Decodes a big-endian unsigned integer, as used by JPEG and PNG.
std::int64_t number(std::string_view bytes) {
    std::int64_t value = 0;
    for (const char byte : bytes)
        value = value * 256 + static_cast<unsigned char>(byte);
    return value;
}

} // namespace

PictureFile::PictureFile(platform::Descriptor file, QDeadlineTimer deadline,
                         std::optional<platform::FilePart> part)
    : m_file(std::move(file)), m_deadline(deadline) {
    struct stat status {};
    if (fstat(m_file.number(), &status) != 0)
        return;
    m_part = part.value_or(platform::FilePart{0, status.st_size});
    m_part.length = std::min<qint64>(m_part.length, status.st_size - m_part.offset);
    if (m_part.length > maxBytes)
        return;
    std::array<char, 16> start{};
    const qint64 length = readAt(0, start.data(), start.size());
    const QByteArray format = formatOf({start.data(), static_cast<std::size_t>(length)});
    if (format == "png" ? !addPngChunks() : format == "jpeg" && !fitsMemoryLimit())
        return;
    if (m_ranges.empty())
        addRange(0, m_part.length);
    m_format = format;
    open(ReadOnly | Unbuffered);
}

qint64 PictureFile::size() const {
    qint64 size = 0;
    for (const Range& range : m_ranges)
        size += range.length;
    return size;
}

qint64 PictureFile::readData(char* data, qint64 maxSize) {
    qint64 within = pos();
    for (const auto& [begin, length] : m_ranges) {
        if (within < length)
            return readAt(begin + within, data, std::min(maxSize, length - within));
        within -= length;
    }
    return 0;
}

qint64 PictureFile::readAt(qint64 offset, char* data, qint64 maxSize) const {
    maxSize = std::min<qint64>(maxSize, m_part.length - offset);
    if (maxSize <= 0 || m_deadline.hasExpired())
        return 0;
    ssize_t length = 0;
    do {
        length = pread(m_file.number(), data, static_cast<std::size_t>(maxSize), m_part.offset + offset);
    } while (length < 0 && errno == EINTR);
    return std::max<qint64>(length, 0);
}

std::string_view PictureFile::bytesAt(qint64 offset, qint64 count, char* buffer) const {
    return readAt(offset, buffer, count) == count ? std::string_view(buffer, static_cast<std::size_t>(count))
                                                  : std::string_view();
}

void PictureFile::addRange(qint64 begin, qint64 end) {
    end = std::min<qint64>(end, m_part.length);
    if (!m_ranges.empty() && m_ranges.back().begin + m_ranges.back().length == begin)
        m_ranges.back().length = end - m_ranges.back().begin;
    else if (begin < end)
        m_ranges.push_back({begin, end - begin});
}

/// Returns whether a JPEG can be decoded within the memory limit. For progressive images and those with
/// several scans the decoder keeps all coefficients in memory at full size, regardless of Qt's allocation
/// limit. Returns false if the headers are malformed. Marker codes: ITU-T T.81, table B.1.
bool PictureFile::fitsMemoryLimit() const {
    constexpr std::int64_t maxCoefficientBytes = 192'000'000;
    constexpr std::int64_t bytesPerCoefficient = 2;
    char buffer[6];
    std::int64_t coefficients = 0;
    std::int64_t components = 0;
    bool isProgressive = false;
    for (qint64 at = 2;;) {
        // Skips bytes that are no marker, as the decoder does.
        const std::string_view marker = bytesAt(at, 2, buffer);
        if (marker.empty())
            return false;
        const auto kind = static_cast<unsigned char>(marker[1]);
        if (marker[0] != '\xFF' || kind == 0x00 || kind == 0xFF) {
            ++at;
            continue;
        }
        const bool hasNoSegment = kind == 0x01 || (kind >= 0xD0 && kind <= 0xD8); // TEM, RST0 to RST7, SOI
        at += 2;
        if (hasNoSegment)
            continue;
        const std::int64_t length = number(bytesAt(at, 2, buffer));
        // SOF0 to SOF15; the excluded codes are DHT, JPG and DAC.
        const bool isFrame = kind >= 0xC0 && kind <= 0xCF && kind != 0xC4 && kind != 0xC8 && kind != 0xCC;
        if (isFrame) {
            if (bytesAt(at + 3, 5, buffer).empty())
                return false;
            components = number({buffer + 4, 1});
            coefficients = number({buffer, 2}) * number({buffer + 2, 2}) * components;
            isProgressive = kind != 0xC0 && kind != 0xC1 && kind != 0xC9;
        }
        constexpr unsigned char startOfScan = 0xDA;
        if (kind == startOfScan) {
            const bool isSingleScan = !isProgressive && number(bytesAt(at + 2, 1, buffer)) == components;
            return isSingleScan || coefficients * bytesPerCoefficient <= maxCoefficientBytes;
        }
        if (length < 2)
            return false;
        at += length;
    }
}

/// Makes only the chunks visible that affect the image. The decoder would decompress and keep text chunks,
/// suggested palettes and the like: 3 MB of them can expand to 15 GB. Returns false if the visible chunks are
/// scattered over too many ranges.
bool PictureFile::addPngChunks() {
    constexpr std::string_view visibleChunks[] = {"IHDR", "PLTE", "tRNS", "IDAT", "IEND",
                                                  "cHRM", "gAMA", "iCCP", "sRGB"};
    constexpr std::size_t maxRanges = 32;
    constexpr qint64 signatureSize = 8;
    constexpr qint64 chunkOverhead = 12; // length and type before the data, a checksum after it
    addRange(0, signatureSize);
    char buffer[8];
    for (qint64 at = signatureSize; at < m_part.length && m_ranges.size() <= maxRanges;) {
        const std::string_view head = bytesAt(at, 8, buffer);
        if (head.empty())
            break; // truncated file: the decoder shows the part it has
        const std::string_view name = head.substr(4);
        const qint64 end = at + chunkOverhead + number(head.substr(0, 4));
        if (std::find(std::begin(visibleChunks), std::end(visibleChunks), name) != std::end(visibleChunks))
            addRange(at, end);
        if (name == "IEND")
            break;
        at = end;
    }
    return m_ranges.size() <= maxRanges;
}
