#include "app/update/update_description.h"
#include "app/update/version.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

/// Decoding an update description does not crash, and of two versions at most one is newer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto update = decodeUpdateDescription({reinterpret_cast<const char*>(data), size});
    if (!update)
        return 0;
    using UpdateChecker::isNewer;
    const auto& [version, page] = *update;
    if ((isNewer(version, page) && isNewer(page, version)) || isNewer(version, version)
        || isNewer(version, version + ".0.x"))
        std::abort();
    return 0;
}
