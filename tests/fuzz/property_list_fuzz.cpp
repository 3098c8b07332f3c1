#include "platform/property_lists/property_list.h"

#include "platform/text/text.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Parsing any bytes ends without a crash, and returned texts are valid UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto list = platform::PropertyList::parse({reinterpret_cast<const char*>(data), size});
    if (!list)
        return 0;
    for (const char* key : {"Label", "CFBundleIdentifier", "CFBundleName", "a", ""}) {
        const auto text = list->string(key);
        if (text && (list->boolean(key) || platform::displayed(*text) != *text))
            std::abort();
    }
    return 0;
}
