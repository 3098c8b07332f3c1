#pragma once

#include "core/items/scan_item.h"
#include "platform/base/progress.h"
#include "platform/files/disk.h"

#include <string>
#include <string_view>
#include <vector>

namespace core {

/// A file or folder proposed for cleanup whose size is not known yet. Scan sources only list folders; all
/// candidates are then measured together in one parallel walk.
struct Candidate {
    std::string path;
    ScanCategory category;
    std::string_view explanation; ///< translation key, a string literal
    bool safeByDefault;
};

/// Treatment of candidates whose measured size is 0.
enum class ZeroSize { skip, keep };

/// Returns the candidates as items with their sizes and modification dates, in the order given, without those
/// in folders whose entries may not be deleted because a symbolic link leads elsewhere. Blocks while their
/// content is walked; any thread. Counts what is walked in `progress`, which may be null; when that is
/// stopped, the items and sizes are incomplete.
std::vector<ScanItem> measureCandidates(const platform::Disk& disk, std::vector<Candidate> found,
                                        ZeroSize zeroSize = ZeroSize::skip,
                                        platform::Progress* progress = nullptr);

} // namespace core
