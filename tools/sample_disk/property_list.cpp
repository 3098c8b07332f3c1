#include "tools/sample_disk/property_list.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include <plist/plist.h>

namespace sample_disk {

std::string propertyList(std::string_view entries, PropertyListFormat format) {
    std::string xml = R"(<?xml version="1.0" encoding="UTF-8"?><plist version="1.0"><dict>)";
    xml.append(entries).append("</dict></plist>\n");
    if (format == PropertyListFormat::xml)
        return xml;
    plist_t list = nullptr;
    plist_from_xml(xml.data(), static_cast<std::uint32_t>(xml.size()), &list);
    char* bytes = nullptr;
    std::uint32_t length = 0;
    plist_to_bin(list, &bytes, &length);
    plist_free(list);
    if (bytes == nullptr)
        throw std::bad_alloc();
    std::string binary(bytes, length);
    std::free(bytes);
    return binary;
}

std::string textEntry(std::string_view key, std::string_view value) {
    return std::string("<key>").append(key).append("</key><string>").append(value).append("</string>");
}

} // namespace sample_disk
