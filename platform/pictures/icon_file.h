#pragma once

#include "platform/files/descriptor.h"
#include "platform/files/file_part.h"

#include <cstdint>
#include <optional>
#include <vector>

/// Icon files of applications (.icns), which hold one icon in several sizes and formats. Their content is
/// untrusted. Only the headers and one picture are read. Blocks on the disk; for any thread.
namespace platform {

/// One of the pictures of an icon file.
struct IconPicture {
    enum class Format {
        png,  ///< a PNG file, for a decoder of such files
        argb, ///< for readIconPixels(), like the next
        rgb,
    };
    Format format;
    int side; ///< in pixels; at most 1024
    FilePart content;
    FilePart mask = {}; ///< the opacities of an `rgb` picture; empty if it has none
};

/// Returns the picture that suits a square of `side` pixels best: the smallest one that is at least as large,
/// otherwise the largest. Returns nothing if the file has no picture that can be decoded; JPEG 2000 isn't.
std::optional<IconPicture> findIconPicture(const Descriptor& file, int side);

/// Decodes a picture that isn't a PNG. Returns its pixels from left to right and from top to bottom, each as
/// 0xAARRGGBB with colors that aren't multiplied by the opacity; none if the picture is damaged.
std::vector<std::uint32_t> readIconPixels(const Descriptor& file, const IconPicture& picture);

} // namespace platform
