#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One deletion, as the history keeps it.
struct HistoryEntry {
    platform::Date date;
    std::string name; ///< UTF-8, as it was shown
    std::int64_t sizeBytes = 0;

    /// The date in seconds since 1970 in the shortest decimal form that reads back, "-", the name.
    std::string id() const;

    bool operator==(const HistoryEntry&) const = default;
};

/// The entries as one compact JSON array (RFC 8259), dates in seconds since 2001.
std::string encodeHistory(const std::vector<HistoryEntry>& entries);

/// The entries of such an array; none when it is anything else or a member is missing or of another type.
/// Unknown members are passed over.
std::optional<std::vector<HistoryEntry>> decodeHistory(std::string_view json);
