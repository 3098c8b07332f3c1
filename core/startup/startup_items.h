#pragma once

#include "core/startup/startup_item.h"
#include "platform/base/result.h"
#include "platform/files/disk.h"

#include <functional>
#include <string>
#include <vector>

/// Launch agents. Stateless: every operation reads the disk again, blocks, may be called from any thread and
/// skips files that cannot be read.
namespace core::LumvaleStartupItems {

/// Returns the launch agents of the user and of all accounts, except those of the system, in the order of
/// their display names. Reads the property list of every agent and application: not for the interface thread.
std::vector<StartupItem> scan(const platform::Disk& disk = platform::Disk::current());

/// Unloads an agent of the user with launchctl, if the disk is the one this machine runs from, and moves its
/// property list to the Trash. Fails if the property list was not moved, and for a system-wide agent, which
/// is not changed.
platform::Result<void> disable(const StartupItem& item,
                               const platform::Disk& disk = platform::Disk::current());

/// Does the same with `launchctl` called instead of the system's tool, with the same arguments and result.
platform::Result<void> disable(const StartupItem& item, const platform::Disk& disk,
                               const std::function<int(const std::vector<std::string>&)>& launchctl);

} // namespace core::LumvaleStartupItems
