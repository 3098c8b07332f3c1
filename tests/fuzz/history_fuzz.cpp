#include "app/history/history_entry.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Entries decoded from a history file stay the same when they are encoded and decoded again.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto entries = decodeHistory({reinterpret_cast<const char*>(data), size});
    if (entries && decodeHistory(encodeHistory(*entries)) != entries)
        std::abort();
    return 0;
}
