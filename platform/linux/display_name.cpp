#include "platform/files/display_name.h"

#include "platform/files/path.h"

namespace platform {

std::string displayName(const Disk&, std::string_view path) {
    return std::string(lastComponent(path));
}

} // namespace platform
