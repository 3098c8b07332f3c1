#pragma once

#include "platform/base/result.h"

#include <functional>
#include <string>

namespace platform {

/// A service of the system that moves the entry at an absolute path of the host to this user's Trash, and
/// records where it came from. Symbolic links at the last name aren't followed. Returns the entry's new path
/// on the host, which is empty when the service doesn't report it, or the service's own error.
using TrashService = std::function<Result<std::string>(const std::string& hostPath)>;

/// Returns this system's service (on a Mac NSFileManager's, whose moves Finder can put back), or an empty
/// function when it has none.
TrashService systemTrash();

} // namespace platform
