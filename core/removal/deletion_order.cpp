#include "core/removal/deletion_order.h"

#include "platform/files/path.h"
#include "platform/removal/trash.h"

#include <algorithm>

namespace core::LumvaleScanner {

std::vector<std::string> inDeletionOrder(const std::set<std::string>& paths, const platform::Disk& disk) {
    std::vector<std::string> ordered(paths.begin(), paths.end());
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const std::string& a, const std::string& b) { return a.size() > b.size(); });
    std::stable_partition(ordered.begin(), ordered.end(),
                          [trash = platform::trashFolder(disk)](const std::string& path) {
                              return platform::isBelow(path, trash);
                          });
    return ordered;
}

} // namespace core::LumvaleScanner
