#pragma once

#include <cstdint>

namespace LumvaleScanner {

/// The score of a volume with so much free: 100 from five sevenths on, down to 0 for a full one; 100 where
/// the capacity is unknown.
int scoreFor(std::int64_t freeBytes, std::int64_t totalBytes);

} // namespace LumvaleScanner
