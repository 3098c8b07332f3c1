#include "core/items/candidate.h"

#include "platform/walk/walk.h"

#include <cstdint>

namespace core {

std::vector<ScanItem> measureCandidates(const platform::Disk& disk, const std::vector<Candidate>& candidates,
                                        ZeroSize zeroSize) {
    std::vector<std::string> paths;
    paths.reserve(candidates.size());
    for (const Candidate& candidate : candidates)
        paths.push_back(candidate.path);
    const std::vector<std::int64_t> sizes = platform::measure(disk, paths);

    std::vector<ScanItem> items;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        const Candidate& candidate = candidates[i];
        if (sizes[i] > 0 || zeroSize == ZeroSize::keep)
            items.emplace_back(candidate.path, sizes[i], candidate.category, candidate.explanation,
                               candidate.safeByDefault, fileModifiedDate(disk, candidate.path));
    }
    return items;
}

} // namespace core
