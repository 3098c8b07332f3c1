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
    const bool isAfter = UpdateChecker::isNewer(update->version, update->page);
    const bool isBefore = UpdateChecker::isNewer(update->page, update->version);
    if ((isAfter && isBefore) || UpdateChecker::isNewer(update->version, update->version)
        || UpdateChecker::isNewer(update->version, update->version + ".0.x"))
        std::abort();
    return 0;
}
