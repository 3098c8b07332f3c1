#pragma once

#include <optional>
#include <string>

namespace core {

/// A launch agent: a program that starts when the user logs in.
struct StartupItem {
    StartupItem(std::string path, std::string label, std::string displayName, std::string explanation,
                bool isSystemWide, bool isAlreadyDisabled);

    std::string id;          ///< always the path
    std::string path;        ///< path of its property list
    std::string label;       ///< as written in the property list; untrusted, never used as a path
    std::string displayName; ///< name of its application, or derived from the label
    std::string explanation; ///< translation key, "exp_startup_…"
    bool isSystemWide;       ///< starts for every account; cannot be disabled by disable()
    bool isAlreadyDisabled;  ///< "Disabled" is true in the property list

    /// Path of the application's bundle, if there is one: that of the agent's program, which may be missing,
    /// otherwise that of the application by which the item is called. Only its icon is read.
    std::optional<std::string> bundle;

    bool operator==(const StartupItem&) const = default;
};

} // namespace core
