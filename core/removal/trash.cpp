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

/// Removes an entry; if that fails, unlocks it and everything in it and tries again. Returns the error of the
/// first attempt, which describes the original problem, or nothing if the entry was removed.
std::optional<platform::Error> removeWithRetry(const platform::Disk& disk, const std::string& path,
                                               platform::Progress* progress) {
    const platform::Result<void> first = platform::removeForGood(disk, path, progress);
    if (first)
        return std::nullopt;
    if (isStopped(progress))
        return first.error();
    platform::unlock(disk, path, progress);
    if (platform::removeForGood(disk, path, progress))
        return std::nullopt;
    return first.error();
}

} // namespace

TrashReport emptyTrash(const platform::Disk& disk, platform::Progress* progress) {
    TrashReport report;
    const platform::Result<std::vector<std::string>> names = platform::listTrash(disk);
    if (!names) {
        report.couldNotAccess = true;
        return report;
    }
    std::vector<std::string> paths;
    for (const std::string& name : *names)
        paths.push_back(platform::joined(platform::trashFolder(disk), name));
    const std::vector<std::int64_t> sizes = platform::measure(
        disk, paths, progress, progress ? platform::Hidden::include : platform::Hidden::skip);
    if (progress)
        progress->beginPhase(progress->entries());
    for (std::size_t i = 0; i < paths.size(); ++i) {
        if (isStopped(progress)) {
            report.left.insert(report.left.end(), paths.begin() + static_cast<std::ptrdiff_t>(i),
                               paths.end());
            break;
        }
        const std::optional<platform::Error> error = removeWithRetry(disk, paths[i], progress);
        if (!error) {
            ++report.succeeded;
            report.bytesFreed = platform::addBytes(report.bytesFreed, sizes[i]);
        } else if (!isStopped(progress)) {
            ++report.failed;
            report.failedDetails.push_back({(*names)[i], std::string(reasonKey(*error)), error->description});
        } else {
            report.partial = partialRemoval(disk, paths[i], sizes[i]);
            report.bytesFreed = platform::addBytes(report.bytesFreed, report.partial->bytesFreed);
            report.left.push_back(paths[i]);
        }
    }
    return report;
}

} // namespace core::LumvaleScanner
