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

/// Some decoders keep all that they read. Larger originals have a small rendition beside them.
constexpr qint64 maxBytes = 64'000'000;

struct Signature {
    const char* format;
    qsizetype offset;
    std::string_view bytes;
};

// What a format is called here decides which decoder sees the file, and no other one does: the toolkit, left
// to find out by itself, would show it to all that this machine has, and some of those read other files too.
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

/// A number as JPEG and PNG write it.
std::int64_t number(std::string_view bytes) {
    std::int64_t value = 0;
    for (const char byte : bytes)
        value = value * 256 + static_cast<unsigned char>(byte);
    return value;
}

} // namespace

PictureFile::PictureFile(platform::Descriptor file, QDeadlineTimer deadline)
    : m_file(std::move(file)), m_deadline(deadline) {
    struct stat status {};
    if (fstat(m_file.number(), &status) != 0 || status.st_size > maxBytes)
        return;
    m_fileSize = status.st_size;
    std::array<char, 16> start{};
    const qint64 length = readAt(0, start.data(), start.size());
    const QByteArray format = formatOf({start.data(), static_cast<std::size_t>(length)});
    if (format == "png" ? !showPng() : format == "jpeg" && !fitsMemoryLimit())
        return;
    if (m_pieces.empty())
        show(0, m_fileSize);
    m_format = format;
    open(ReadOnly | Unbuffered);
}

qint64 PictureFile::size() const {
    qint64 size = 0;
    for (const Piece& piece : m_pieces)
        size += piece.length;
    return size;
}

qint64 PictureFile::readData(char* data, qint64 most) {
    qint64 within = pos();
    for (const auto& [begin, length] : m_pieces) {
        if (within < length)
            return readAt(begin + within, data, std::min(most, length - within));
        within -= length;
    }
    return 0;
}

qint64 PictureFile::readAt(qint64 offset, char* data, qint64 most) const {
    if (m_deadline.hasExpired())
        return 0;
    ssize_t length = 0;
    do {
        length = pread(m_file.number(), data, static_cast<std::size_t>(most), offset);
    } while (length < 0 && errno == EINTR);
    return std::max<qint64>(length, 0);
}

std::string_view PictureFile::bytesAt(qint64 offset, qint64 count, char* buffer) const {
    return readAt(offset, buffer, count) == count ? std::string_view(buffer, static_cast<std::size_t>(count))
                                                  : std::string_view();
}

void PictureFile::show(qint64 begin, qint64 end) {
    end = std::min(end, m_fileSize);
    if (!m_pieces.empty() && m_pieces.back().begin + m_pieces.back().length == begin)
        m_pieces.back().length = end - m_pieces.back().begin;
    else if (begin < end)
        m_pieces.push_back({begin, end - begin});
}

/// A picture whose colours or details come one after the other is kept whole by the decoder, in full size and
/// without regard to any limit.
bool PictureFile::fitsMemoryLimit() const {
    constexpr std::int64_t mostKept = 192'000'000;
    constexpr std::int64_t bytesOfValue = 2;
    char buffer[6];
    std::int64_t values = 0;
    std::int64_t components = 0;
    bool isProgressive = false;
    for (qint64 at = 2;;) {
        // As the decoder does: what is no mark is passed over.
        const std::string_view mark = bytesAt(at, 2, buffer);
        if (mark.empty())
            return false;
        const auto kind = static_cast<unsigned char>(mark[1]);
        if (mark[0] != '\xFF' || kind == 0x00 || kind == 0xFF) {
            ++at;
            continue;
        }
        const bool standsAlone = kind == 0x01 || (kind >= 0xD0 && kind <= 0xD8);
        at += 2;
        if (standsAlone)
            continue;
        const std::int64_t length = number(bytesAt(at, 2, buffer));
        const bool isFrame = kind >= 0xC0 && kind <= 0xCF && kind != 0xC4 && kind != 0xC8 && kind != 0xCC;
        if (isFrame) {
            if (bytesAt(at + 3, 5, buffer).empty())
                return false;
            components = number({buffer + 4, 1});
            values = number({buffer, 2}) * number({buffer + 2, 2}) * components;
            isProgressive = kind != 0xC0 && kind != 0xC1 && kind != 0xC9;
        }
        constexpr unsigned char scan = 0xDA;
        if (kind == scan) {
            const bool isWhole = !isProgressive && number(bytesAt(at + 2, 1, buffer)) == components;
            return isWhole || values * bytesOfValue <= mostKept;
        }
        if (length < 2)
            return false;
        at += length;
    }
}

/// Only what makes the picture: texts, palettes to choose from and the like are unpacked and kept by the
/// decoder, and a file of three million bytes can hold fifteen thousand million of them. False when it is
/// in disorder.
bool PictureFile::showPng() {
    constexpr std::string_view shown[] = {"IHDR", "PLTE", "tRNS", "IDAT", "IEND",
                                          "cHRM", "gAMA", "iCCP", "sRGB"};
    constexpr std::size_t mostPieces = 32;
    constexpr qint64 signature = 8;
    constexpr qint64 aroundData = 12; // length and name before it, a checksum behind it
    show(0, signature);
    char buffer[8];
    for (qint64 at = signature; at < m_fileSize && m_pieces.size() <= mostPieces;) {
        const std::string_view head = bytesAt(at, 8, buffer);
        if (head.empty())
            break; // cut off: the decoder shows what it has
        const std::string_view name = head.substr(4);
        const qint64 end = at + aroundData + number(head.substr(0, 4));
        if (std::find(std::begin(shown), std::end(shown), name) != std::end(shown))
            show(at, end);
        if (name == "IEND")
            break;
        at = end;
    }
    return m_pieces.size() <= mostPieces;
}
