#include "app/update/version.h"

#include <algorithm>

namespace {

/// Removes the next component that is not empty from `version`. Returns its digits without leading zeros, so
/// that numbers of any length can be compared; empty for 0.
std::string_view takeNumber(std::string_view& version) {
    std::string_view part;
    while (part.empty() && !version.empty()) {
        const std::size_t dot = std::min(version.find('.'), version.size());
        part = version.substr(0, dot);
        version.remove_prefix(std::min(dot + 1, version.size()));
    }
    const bool isWhole = std::all_of(part.begin(), part.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isWhole ? part.substr(std::min(part.find_first_not_of('0'), part.size())) : std::string_view();
}

} // namespace

bool UpdateChecker::isNewer(std::string_view version, std::string_view than) {
    while (!version.empty() || !than.empty()) {
        const std::string_view a = takeNumber(version);
        const std::string_view b = takeNumber(than);
        if (a != b)
            return a.size() == b.size() ? a > b : a.size() > b.size();
    }
    return false;
}
