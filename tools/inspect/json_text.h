#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace inspect {

/// A JSON value whose members keep their order and whose strings are bytes.
using Json = nlohmann::ordered_json;

/// The value as a JSON document. Bytes of a string that aren't UTF-8 become "\udcXX" each, so that any path
/// can be told from any other.
std::string jsonText(const Json& value);

} // namespace inspect
