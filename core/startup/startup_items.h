#pragma once

#include "core/removal/deletion.h"
#include "core/startup/startup_item.h"
#include "platform/base/result.h"
#include "platform/files/disk.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace core {

/// A launch agent that was disabled.
struct DisabledItem {
    std::optional<MovedEntry> propertyList; ///< absent if it cannot be put back
    bool wasUnloaded = false;               ///< launchctl has unloaded it
};

} // namespace core

/// Launch agents. Stateless: every operation reads the disk again, blocks, may be called from any thread and
/// skips files that cannot be read.
namespace core::LumvaleStartupItems {

/// Returns the launch agents of the user and of all accounts, except those of the system, in the order of
/// their display names. Reads the property list of every agent and application: not for the interface thread.
std::vector<StartupItem> scan(const platform::Disk& disk = platform::Disk::current());

/// Unloads an agent of the user with launchctl, if the disk is the one this machine runs from, and moves its
/// property list to the Trash. Fails if the property list was not moved: launchctl loads the agent again
/// then; if that fails, too, macOS loads it at the next login. Also fails for a system-wide agent, which is
/// not changed.
platform::Result<DisabledItem> disable(const StartupItem& item,
                                       const platform::Disk& disk = platform::Disk::current());

/// Puts the property list of an agent back, and loads it with launchctl if disable() had unloaded it. Fails
/// as putBack() does if the property list was not put back. Otherwise returns false if launchctl could not
/// load it.
platform::Result<bool> enable(const DisabledItem& item,
                              const platform::Disk& disk = platform::Disk::current());

/// A function that is called instead of the system's tool, with the same arguments and result.
using Launchctl = std::function<int(const std::vector<std::string>&)>;

/// Do the same with another `launchctl`.
platform::Result<DisabledItem> disable(const StartupItem& item, const platform::Disk& disk,
                                       const Launchctl& launchctl);
platform::Result<bool> enable(const DisabledItem& item, const platform::Disk& disk,
                              const Launchctl& launchctl);

} // namespace core::LumvaleStartupItems
