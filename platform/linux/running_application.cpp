#include "platform/system/running_application.h"

namespace platform {

bool isApplicationRunning(const Disk& /*disk*/, const std::string& /*bundleIdentifier*/) {
    return false;
}

} // namespace platform
