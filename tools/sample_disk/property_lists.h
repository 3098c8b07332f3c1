#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace SampleDisk {

enum class PropertyListFormat { xml, binary };

/// A dictionary of Booleans.
using Flags = std::vector<std::pair<std::string, bool>>;

using PropertyValue = std::variant<std::string, bool, unsigned, std::vector<std::string>, Flags>;
using Properties = std::vector<std::pair<std::string, PropertyValue>>;

/// The bytes of a property list with this dictionary at its top.
std::string propertyList(const Properties& properties, PropertyListFormat format);

} // namespace SampleDisk
