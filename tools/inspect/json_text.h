#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace inspect {

/// A JSON value with ordered members. Its strings may contain invalid UTF-8.
using Json = nlohmann::ordered_json;

/// Returns the value as a JSON document (RFC 8259). Each invalid byte of a string becomes "\udcXX", so that
/// different paths stay different.
std::string jsonText(const Json& value);

} // namespace inspect
