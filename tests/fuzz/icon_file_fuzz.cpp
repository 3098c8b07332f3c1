#include "platform/pictures/icon_file.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

/// Choosing and decoding a picture of any bytes ends without a crash, with a whole picture or none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static std::FILE* const stream = std::tmpfile();
    const platform::Descriptor file(dup(fileno(stream)));
    if (ftruncate(file.number(), 0) != 0
        || pwrite(file.number(), data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    for (const int side : {16, 32, 128})
        if (const auto picture = platform::findIconPicture(file, side)) {
            const auto count = static_cast<std::size_t>(picture->side * picture->side);
            const auto pixels = platform::readIconPixels(file, *picture);
            if (!pixels.empty() && pixels.size() != count)
                std::abort();
        }
    return 0;
}
