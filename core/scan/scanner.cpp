#include "core/scan/scanner.h"

#include "core/scan/large_files.h"
#include "core/scan/sources.h"
#include "core/uninstall/orphaned_leftovers.h"
#include "core/uninstall/virtual_machines.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace core::LumvaleScanner {

namespace {

constexpr std::int64_t minLargeFileBytes = 52'428'800; // 50 MiB
constexpr std::size_t maxLargeFiles = 300;

template <class T>
void append(std::vector<T>& list, std::vector<T> more) {
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace

ScanResult scan(const platform::Disk& disk, platform::Progress* progress) {
    using enum ScanCategory;
    platform::Progress own;
    if (!progress)
        progress = &own;
    const auto childrenOf = [&](std::string_view folder, ScanCategory category,
                                std::string_view explanation) {
        return scanDirectoryEntries(disk, disk.inHome(folder), category, explanation, true, progress);
    };

    // Items of equal size stay in the order of the sources.
    std::vector<Candidate> candidates;
    append(candidates, childrenOf("Library/Caches", cache, "exp_cache"));
    append(candidates, childrenOf("Library/Logs", logs, "exp_logs"));
    append(candidates, childrenOf(".Trash", trash, "exp_trash"));
    append(candidates, scanOldDownloads(disk, disk.inHome("Downloads"), platform::now(), progress));
    append(candidates, childrenOf("Library/Developer/Xcode/DerivedData", cache, "exp_derived_data"));
    append(candidates, childrenOf("Library/Developer/CoreSimulator/Caches", cache, "exp_simulator_cache"));
    append(candidates, LumvaleUninstaller::orphanCandidates(disk, progress));
    append(candidates, LumvaleUninstaller::virtualMachineCandidates(disk, progress));

    std::vector<ScanItem> items = measureCandidates(disk, std::move(candidates), ZeroSize::skip, progress);
    append(items, scanLargeFiles(disk, disk.home(), minLargeFileBytes, maxLargeFiles, progress));

    if (!progress->isStopped())
        std::stable_sort(items.begin(), items.end(),
                         [](const ScanItem& a, const ScanItem& b) { return a.sizeBytes > b.sizeBytes; });
    ScanResult result(std::move(items));
    result.unreadFolders = progress->unreadFolders();
    return result;
}

} // namespace core::LumvaleScanner
