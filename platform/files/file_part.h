#pragma once

#include <cstdint>

namespace platform {

/// A part of a file, in bytes.
struct FilePart {
    std::int64_t offset = 0;
    std::int64_t length = 0;
};

} // namespace platform
