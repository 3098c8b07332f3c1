#pragma once

#include "platform/base/result.h"

#include <string>
#include <vector>

/// An error's code and those of its causes, outermost first: "513:13". A domain that isn't the system's is
/// named: "Lumvale 1".
inline std::string codes(const platform::Error& error) {
    const bool isSystems = error.domain == platform::cocoaDomain || error.domain == platform::posixDomain;
    return (isSystems ? "" : error.domain + " ") + std::to_string(error.code)
           + (error.underlying ? ":" + codes(*error.underlying) : "");
}

/// Those of a result's error; "" for success.
template <class Value>
std::string codes(const platform::Result<Value>& result) {
    return result ? "" : codes(result.error());
}

/// The paths that a deletion couldn't touch, each with the codes of why: "/Users/me/x 513:13".
template <class Outcome>
std::vector<std::string> failures(const Outcome& outcome) {
    std::vector<std::string> lines;
    for (const auto& failure : outcome.failed)
        lines.push_back(failure.path + " " + codes(failure.error));
    return lines;
}
