#pragma once

#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace SampleDisk {

enum class PropertyListFormat { xml, binary };

using PropertyValue = std::variant<std::string, bool, std::vector<std::string>>;
using Properties = std::vector<std::pair<std::string, PropertyValue>>;

/// The bytes of a property list with this dictionary at its top.
std::string propertyList(const Properties& properties, PropertyListFormat format);

} // namespace SampleDisk
