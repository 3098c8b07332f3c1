#include "core/uninstall/installed_app.h"

#include <utility>

namespace core {

InstalledApp::InstalledApp(std::string appName, std::optional<std::string> identifier, std::string appPath,
                           std::int64_t size)
    : id(appPath),
      name(std::move(appName)),
      bundleIdentifier(std::move(identifier)),
      path(std::move(appPath)),
      sizeBytes(size) {}

} // namespace core
