#include "core/scan/scan_result.h"

#include "platform/base/bytes.h"

#include <utility>

namespace core {

ScanResult::ScanResult(std::vector<ScanItem> list) : items(std::move(list)), totalBytes(0) {
    for (const ScanItem& item : items)
        totalBytes = platform::addBytes(totalBytes, item.sizeBytes);
}

} // namespace core
