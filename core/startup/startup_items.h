#pragma once

#include "core/startup/startup_item.h"
#include "platform/files/disk.h"

#include <functional>
#include <string>
#include <vector>

/// What starts when the user logs in. Stateless: every operation looks at the disk anew, blocks until done,
/// may be called from any thread and never fails as a whole.
namespace core::LumvaleStartupItems {

/// The launch agents of the user and of every account, without the system's own, in the order of their shown
/// names. Reads two folders and the applications' names: not for the interface thread.
std::vector<StartupItem> scan(const platform::Disk& disk = platform::Disk::current());

/// Unloads the user's agent, where the disk is this machine's own, and moves its property list to the Trash.
/// Whether the list was moved; an agent that starts for every account is left alone, and false comes back.
/// Waits for both.
bool disable(const StartupItem& item, const platform::Disk& disk = platform::Disk::current());

/// Disables with `launchctl` in the place of the system's tool.
bool disable(const StartupItem& item, const platform::Disk& disk,
             const std::function<int(const std::vector<std::string>&)>& launchctl);

} // namespace core::LumvaleStartupItems
