#include "core/scan/sources.h"

#include "platform/files/folder.h"
#include "platform/files/path.h"
#include "platform/removal/trash.h"

#include <chrono>

namespace core::LumvaleScanner {

namespace {

constexpr std::chrono::seconds oldDownloadAge{2'592'000}; // 30 days

std::vector<std::string> childrenOf(const platform::Disk& disk, const std::string& folder,
                                    platform::Progress* progress) {
    // listTrash() refuses a Trash folder that is a symbolic link.
    const platform::Result<std::vector<std::string>> names =
        folder == platform::trashFolder(disk)
            ? platform::listTrash(disk, progress)
            : platform::listFolder(disk, folder, platform::Hidden::include, progress);
    return names ? *names : std::vector<std::string>{};
}

} // namespace

std::vector<Candidate> scanDirectoryEntries(const platform::Disk& disk, const std::string& folder,
                                            ScanCategory category, std::string_view explanation,
                                            bool safeByDefault, platform::Progress* progress) {
    const bool skipsHidden = category == ScanCategory::cache || category == ScanCategory::logs;
    std::vector<Candidate> candidates;
    for (const std::string& name : childrenOf(disk, folder, progress)) {
        if (isStopped(progress))
            break;
        if (!(skipsHidden && name.starts_with('.')))
            candidates.push_back({platform::joined(folder, name), category, explanation, safeByDefault});
    }
    return candidates;
}

std::vector<Candidate> scanOldDownloads(const platform::Disk& disk, const std::string& folder,
                                        platform::Date now, platform::Progress* progress) {
    const platform::Date cutoff = now - oldDownloadAge;
    std::vector<Candidate> candidates;
    for (const std::string& name : childrenOf(disk, folder, progress)) {
        if (isStopped(progress))
            break;
        std::string path = platform::joined(folder, name);
        if (const auto modified = fileModifiedDate(disk, path); modified && *modified < cutoff)
            candidates.push_back({std::move(path), ScanCategory::oldDownloads, "exp_old_downloads", false});
    }
    return candidates;
}

} // namespace core::LumvaleScanner
