#include "core/uninstall/uninstaller.h"

#include <utility>

namespace core::LumvaleUninstaller {

DeletionOutcome uninstall(const InstalledApp& app, std::vector<std::string> relatedPaths,
                          const platform::Disk& disk) {
    std::vector<std::string> paths = std::move(relatedPaths);
    paths.push_back(app.path);
    return LumvaleScanner::deletePaths(paths, disk);
}

} // namespace core::LumvaleUninstaller
