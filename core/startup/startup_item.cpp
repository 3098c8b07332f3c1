#include "core/startup/startup_item.h"

#include <utility>

namespace core {

StartupItem::StartupItem(std::string itemPath, std::string itemLabel, std::string name,
                         std::string explanationKey, bool systemWide, bool alreadyDisabled)
    : id(itemPath),
      path(std::move(itemPath)),
      label(std::move(itemLabel)),
      displayName(std::move(name)),
      explanation(std::move(explanationKey)),
      isSystemWide(systemWide),
      isAlreadyDisabled(alreadyDisabled) {}

} // namespace core
