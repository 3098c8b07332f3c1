#pragma once

#include <string>

namespace core {

/// A launch agent: something that starts when the user logs in.
struct StartupItem {
    StartupItem(std::string path, std::string label, std::string displayName, std::string explanation,
                bool isSystemWide, bool isAlreadyDisabled);

    std::string id;          ///< always the path
    std::string path;        ///< of its property list, as listed
    std::string label;       ///< as written in the list; may hold anything, so never a path
    std::string displayName; ///< its application's name, or one made from the label
    std::string explanation; ///< translation key, "exp_startup_…"
    bool isSystemWide;       ///< starts for every account, and cannot be disabled from here
    bool isAlreadyDisabled;  ///< the list itself says so

    bool operator==(const StartupItem&) const = default;
};

} // namespace core
