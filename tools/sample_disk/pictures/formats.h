#pragma once

#include "tools/sample_disk/pictures/canvas.h"

#include <cstdint>
#include <string>

namespace SampleDisk {

// The bytes of files. Decoders stop where the picture ends, so that a file may go on after it.

/// Baseline JPEG. Width and height must be multiples of 16.
std::string jpeg(const Canvas& picture);

/// PNG, its pixels as they are: what it would take to pack them is not worth it for a sample.
std::string png(const Canvas& picture);

/// The beginning of a QuickTime film of `bytes` bytes, with no frame in it that could be decoded.
std::string film(std::int64_t bytes);

} // namespace SampleDisk
