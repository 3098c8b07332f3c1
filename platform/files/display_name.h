#pragma once

#include "platform/files/disk.h"

#include <string>
#include <string_view>

namespace platform {

/// Returns the name that the system shows for the entry at `path` ("Bureau" for "Desktop" on a French Mac),
/// which is its last name where the system has no localized names.
std::string displayName(const Disk& disk, std::string_view path);

} // namespace platform
