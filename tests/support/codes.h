#pragma once

#include "platform/base/result.h"

#include <string>
#include <vector>

/// Returns an error's code followed by those of its causes: "513:13". A domain other than Cocoa's and POSIX's
/// comes first: "Lumvale 1".
inline std::string codes(const platform::Error& error) {
    const bool isSystems = error.domain == platform::cocoaDomain || error.domain == platform::posixDomain;
    return (isSystems ? "" : error.domain + " ") + std::to_string(error.code)
           + (error.underlying ? ":" + codes(*error.underlying) : "");
}

/// Returns the codes of a result's error, or "" for success.
template <class Value>
std::string codes(const platform::Result<Value>& result) {
    return result ? "" : codes(result.error());
}

/// Returns the paths that a deletion failed on, each with its error's codes: "/Users/me/x 513:13".
template <class Outcome>
std::vector<std::string> failures(const Outcome& outcome) {
    std::vector<std::string> lines;
    for (const auto& failure : outcome.failed)
        lines.push_back(failure.path + " " + codes(failure.error));
    return lines;
}
