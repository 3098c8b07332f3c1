#include "tools/inspect/json_text.h"

#include "platform/text/text.h"

#include <string_view>

namespace inspect {

namespace {

/// Returns the length in bytes of the UTF-8 character that starts with this byte.
std::size_t lengthFrom(unsigned char lead) {
    return lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC0 ? 2 : 1;
}

void appendEscaped(std::string& text, std::string_view prefix, unsigned char byte) {
    constexpr std::string_view digits = "0123456789abcdef";
    text.append(prefix).append({digits[byte >> 4], digits[byte & 0xF]});
}

void appendString(std::string& text, std::string_view bytes) {
    text += '"';
    while (!bytes.empty()) {
        const auto lead = static_cast<unsigned char>(bytes.front());
        std::string_view character = bytes.substr(0, lengthFrom(lead));
        if (platform::displayed(character) != character) {
            character = bytes.substr(0, 1);
            appendEscaped(text, "\\udc", lead);
        } else if (lead < 0x20) {
            appendEscaped(text, "\\u00", lead);
        } else {
            if (lead == '"' || lead == '\\')
                text += '\\';
            text.append(character);
        }
        bytes.remove_prefix(character.size());
    }
    text += '"';
}

void appendValue(std::string& text, const Json& value) {
    const char* separator = "";
    if (value.is_string()) {
        appendString(text, value.get_ref<const std::string&>());
    } else if (value.is_array()) {
        text += '[';
        for (const Json& item : value) {
            text += separator;
            appendValue(text, item);
            separator = ",\n";
        }
        text += ']';
    } else if (value.is_object()) {
        text += '{';
        for (const auto& [name, member] : value.items()) {
            text += separator;
            appendString(text, name);
            text += ": ";
            appendValue(text, member);
            separator = ", ";
        }
        text += '}';
    } else {
        text += value.dump();
    }
}

} // namespace

std::string jsonText(const Json& value) {
    std::string text;
    appendValue(text, value);
    return text;
}

} // namespace inspect
