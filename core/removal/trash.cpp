#include "core/removal/trash.h"
#include "core/removal/reason_key.h"
#include "platform/base/bytes.h"
#include "platform/files/path.h"
#include "platform/removal/remove.h"
#include "platform/removal/trash.h"
#include "platform/walk/walk.h"

#include <optional>

namespace core::LumvaleScanner {

namespace {

/// Removes one entry, after a failure once more with everything in it unlocked. The error of the first
/// attempt, which says what was wrong before anything was tried; none when the entry is gone.
std::optional<platform::Error> removeUnlocked(const platform::Disk& disk, const std::string& path) {
    const platform::Result<void> first = platform::removeForGood(disk, path);
    if (first)
        return std::nullopt;
    platform::unlock(disk, path);
    if (platform::removeForGood(disk, path))
        return std::nullopt;
    return first.error();
}

} // namespace

TrashReport emptyTrash(const platform::Disk& disk) {
    TrashReport report;
    const platform::Result<std::vector<std::string>> names = platform::listTrash(disk);
    if (!names) {
        report.couldNotAccess = true;
        return report;
    }
    std::vector<std::string> paths;
    for (const std::string& name : *names)
        paths.push_back(platform::joined(platform::trashFolder(disk), name));
    const std::vector<std::int64_t> sizes = platform::measure(disk, paths);
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (const std::optional<platform::Error> error = removeUnlocked(disk, paths[i])) {
            ++report.failed;
            report.failedDetails.push_back({(*names)[i], std::string(reasonKey(*error)), error->description});
        } else {
            ++report.succeeded;
            report.bytesFreed = platform::addBytes(report.bytesFreed, sizes[i]);
        }
    }
    return report;
}

} // namespace core::LumvaleScanner
