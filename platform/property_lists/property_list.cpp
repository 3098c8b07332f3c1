#include "platform/property_lists/property_list.h"

#include "platform/files/file.h"
#include "platform/files/path.h"
#include "platform/property_lists/property_list_guard.h"
#include "platform/text/text.h"

#include <cstdint>

#include <plist/plist.h>

namespace platform {

struct PropertyList::Node {
    explicit Node(plist_t owned) : top(owned) {}
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() { plist_free(top); }

    plist_t top;
};

namespace {

Error malformed() {
    return {std::string(cocoaDomain), cocoa::propertyListCorrupt, "The property list can't be read.",
            nullptr};
}

/// Returns the node that libplist parses from `bytes`, or null when libplist or the guard rejects them.
plist_t libraryNode(std::string_view bytes) {
    if (bytes.size() > property_list_guard::maxFileBytes)
        return nullptr;
    plist_t top = nullptr;
    if (bytes.starts_with("bplist")) {
        if (property_list_guard::isBoundedBinary(bytes))
            plist_from_bin(bytes.data(), static_cast<std::uint32_t>(bytes.size()), &top);
    } else if (const auto xml = property_list_guard::bareXml(bytes)) {
        plist_from_xml(xml->data(), static_cast<std::uint32_t>(xml->size()), &top);
    }
    return top;
}

/// Returns the value of `key`, owned by `top`, or null when there is none or `top` isn't a dictionary.
plist_t valueOf(plist_t top, const std::string& key) {
    return plist_get_node_type(top) == PLIST_DICT ? plist_dict_get_item(top, key.c_str()) : nullptr;
}

std::optional<std::string> stringOf(plist_t value) {
    if (value == nullptr || plist_get_node_type(value) != PLIST_STRING)
        return std::nullopt;
    std::uint64_t length = 0;
    const char* text = plist_get_string_ptr(value, &length);
    if (text == nullptr)
        return std::nullopt;
    return displayed({text, length}); // strings of binary lists may hold invalid UTF-8
}

} // namespace

Result<PropertyList> PropertyList::parse(std::string_view bytes) {
    const plist_t top = libraryNode(bytes);
    if (top == nullptr)
        return malformed();
    return PropertyList(std::make_shared<Node>(top));
}

Result<PropertyList> PropertyList::read(const Disk& disk, std::string_view path) {
    const Result<std::string> content = readFile(disk, path, property_list_guard::maxFileBytes);
    if (!content)
        return content.error();
    return parse(*content);
}

PropertyList::Root PropertyList::root() const {
    switch (plist_get_node_type(m_node->top)) {
    case PLIST_DICT:
        return Root::dictionary;
    case PLIST_ARRAY:
        return Root::array;
    case PLIST_STRING:
        return Root::string;
    case PLIST_UINT:
        return Root::integer;
    case PLIST_REAL:
        return Root::real;
    case PLIST_BOOLEAN:
        return Root::boolean;
    case PLIST_DATE:
        return Root::date;
    case PLIST_DATA:
        return Root::data;
    default:
        return Root::other;
    }
}

std::optional<std::string> PropertyList::string(const std::string& key) const {
    return stringOf(valueOf(m_node->top, key));
}

std::optional<bool> PropertyList::boolean(const std::string& key) const {
    const plist_t value = valueOf(m_node->top, key);
    if (value == nullptr || plist_get_node_type(value) != PLIST_BOOLEAN)
        return std::nullopt;
    std::uint8_t isTrue = 0;
    plist_get_bool_val(value, &isTrue);
    return isTrue != 0;
}

std::optional<std::string> PropertyList::firstString(const std::string& key) const {
    const plist_t value = valueOf(m_node->top, key);
    if (value == nullptr || plist_get_node_type(value) != PLIST_ARRAY || plist_array_get_size(value) == 0)
        return std::nullopt;
    return stringOf(plist_array_get_item(value, 0));
}

} // namespace platform
