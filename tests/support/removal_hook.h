#pragma once

#include <functional>

/// Called before each removal of a file or folder, while set. Requires that the program is linked with
/// `--wrap=unlinkat`; see hook_removals() in CMake.
extern std::function<void()> beforeRemoval;
