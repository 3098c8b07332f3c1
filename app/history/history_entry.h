#pragma once

#include "platform/base/date.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// One deletion in the history.
struct HistoryEntry {
    double secondsSince2001 = 0; ///< UTC; the very number of the file, because a conversion would round it
    std::string name;            ///< UTF-8
    std::int64_t sizeBytes = 0;

    HistoryEntry() = default;
    HistoryEntry(platform::Date date, std::string entryName, std::int64_t bytes);

    platform::Date date() const;

    /// Returns "<date>-<name>", with the date in seconds since 1970, in the shortest decimal form that
    /// converts back to the same number.
    std::string id() const;

    bool operator==(const HistoryEntry&) const = default;
};

/// Returns the entries as a compact JSON array (RFC 8259) of objects with the members "date" (seconds since
/// 2001-01-01 UTC), "name" and "sizeBytes".
std::string encodeHistory(const std::vector<HistoryEntry>& entries);

/// Returns the entries of such an array; nothing if `json` is malformed, or a member is missing or of another
/// type. Ignores unknown members.
std::optional<std::vector<HistoryEntry>> decodeHistory(std::string_view json);
