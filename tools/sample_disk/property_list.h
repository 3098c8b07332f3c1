#pragma once

#include <string>
#include <string_view>

namespace sample_disk {

enum class PropertyListFormat { xml, binary };

/// Returns the bytes of a property list. `entries` is the XML inside its top dictionary.
std::string propertyList(std::string_view entries, PropertyListFormat format);

/// Returns the XML of one entry; `value` needs no escaping.
std::string textEntry(std::string_view key, std::string_view value);

} // namespace sample_disk
