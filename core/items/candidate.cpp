#include "core/items/candidate.h"

#include "core/removal/deletion_guard.h"
#include "platform/files/path.h"
#include "platform/walk/walk.h"

#include <cstdint>
#include <optional>
#include <unordered_map>

namespace core {

namespace {

/// Returns the candidates in folders whose entries may be deleted.
std::vector<Candidate> inAllowedFolders(const platform::Disk& disk, std::vector<Candidate> candidates,
                                        const platform::Progress* progress) {
    const LumvaleScanner::PlaceGuard guard(disk);
    std::unordered_map<std::string, bool> allowed;
    std::erase_if(candidates, [&](const Candidate& candidate) {
        if (isStopped(progress))
            return true;
        std::string folder(platform::parent(candidate.path));
        const auto known = allowed.find(folder);
        if (known != allowed.end())
            return !known->second;
        return !allowed.emplace(folder, guard.allowsEntriesOf(folder)).first->second;
    });
    return candidates;
}

} // namespace

std::vector<ScanItem> measureCandidates(const platform::Disk& disk, std::vector<Candidate> found,
                                        ZeroSize zeroSize, platform::Progress* progress) {
    std::vector<Candidate> candidates = inAllowedFolders(disk, std::move(found), progress);
    std::vector<std::string> paths;
    paths.reserve(candidates.size());
    for (Candidate& candidate : candidates)
        paths.push_back(std::move(candidate.path));
    const std::vector<std::int64_t> sizes = platform::measure(disk, paths, progress);

    std::vector<ScanItem> items;
    for (std::size_t i = 0; i < paths.size() && !isStopped(progress); ++i) {
        if (sizes[i] == 0 && zeroSize == ZeroSize::skip)
            continue;
        const std::optional<platform::Date> modified = fileModifiedDate(disk, paths[i]);
        items.emplace_back(std::move(paths[i]), sizes[i], candidates[i].category, candidates[i].explanation,
                           candidates[i].safeByDefault, modified);
    }
    return items;
}

} // namespace core
