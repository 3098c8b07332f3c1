#include "tools/sample_disk/property_lists.h"

#include <cstdint>
#include <cstdlib>
#include <new>

#include <plist/plist.h>

namespace SampleDisk {

namespace {

struct ToNode {
    plist_t operator()(const std::string& value) const { return plist_new_string(value.c_str()); }
    plist_t operator()(bool value) const { return plist_new_bool(value ? 1 : 0); }
    plist_t operator()(unsigned value) const { return plist_new_uint(value); }
    plist_t operator()(const std::vector<std::string>& values) const {
        plist_t array = plist_new_array();
        for (const std::string& value : values)
            plist_array_append_item(array, plist_new_string(value.c_str()));
        return array;
    }
    plist_t operator()(const Flags& flags) const {
        plist_t dictionary = plist_new_dict();
        for (const auto& [key, value] : flags)
            plist_dict_set_item(dictionary, key.c_str(), (*this)(value));
        return dictionary;
    }
};

} // namespace

std::string propertyList(const Properties& properties, PropertyListFormat format) {
    plist_t dictionary = plist_new_dict();
    for (const auto& [key, value] : properties)
        plist_dict_set_item(dictionary, key.c_str(), std::visit(ToNode(), value));
    char* bytes = nullptr;
    std::uint32_t length = 0;
    if (format == PropertyListFormat::xml)
        plist_to_xml(dictionary, &bytes, &length);
    else
        plist_to_bin(dictionary, &bytes, &length);
    plist_free(dictionary);
    if (bytes == nullptr)
        throw std::bad_alloc();
    std::string text(bytes, length);
    std::free(bytes);
    return text;
}

} // namespace SampleDisk
