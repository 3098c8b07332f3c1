#pragma once

#include "tools/sample_disk/canvas.h"

#include <cstdint>
#include <span>
#include <string>

namespace sample_disk {

/// Return the bytes of a picture file. They throw std::bad_alloc when there is no memory.
std::string jpegFile(const Canvas& picture);
std::string pngFile(const Canvas& picture);
/// `pixels` holds four bytes for each of the square's pixels: red, green, blue and opacity.
std::string pngFile(int side, std::span<const std::uint8_t> pixels);

} // namespace sample_disk
