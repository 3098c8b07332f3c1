#pragma once

#include "tools/sample_disk/canvas.h"

#include <string>

namespace sample_disk {

/// Return the bytes of a picture file. They throw std::bad_alloc when there is no memory.
std::string jpegFile(const Canvas& picture);
std::string pngFile(const Canvas& picture);

} // namespace sample_disk
