#include "platform/property_lists/property_list_guard.h"

#include "platform/text/text.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <unicode/unistr.h>

namespace platform::property_list_guard {

namespace {

class Budget {
public:
    /// Subtracts a value with that many bytes of its own. Returns false when it doesn't fit.
    bool take(std::uint64_t bytes) {
        if (bytes > m_left || m_left - bytes < bytesPerValue)
            return false;
        m_left -= bytes + bytesPerValue;
        return true;
    }

private:
    std::uint64_t m_left = maxExpandedBytes;
};

// XML

std::optional<std::string> decoded(std::string_view document) {
    constexpr std::string_view utf8Mark = "\xEF\xBB\xBF";
    const bool bigEndian = document.starts_with("\xFE\xFF");
    if (bigEndian || document.starts_with("\xFF\xFE")) {
        document.remove_prefix(2);
        if (document.size() % 2 != 0)
            return std::nullopt;
        icu::UnicodeString text;
        for (std::size_t i = 0; i < document.size(); i += 2) {
            const auto first = static_cast<unsigned char>(document[i]);
            const auto second = static_cast<unsigned char>(document[i + 1]);
            text.append(static_cast<char16_t>(bigEndian ? first << 8 | second : second << 8 | first));
        }
        std::string result;
        text.toUTF8String(result);
        return result;
    }
    if (document.starts_with(utf8Mark))
        document.remove_prefix(utf8Mark.size());
    std::string text = displayed(document);
    if (text != document)
        return std::nullopt;
    return text;
}

/// Rewrites an XML document as bare elements and text.
class BareXmlWriter {
public:
    explicit BareXmlWriter(std::string_view xml) : m_rest(xml) { m_bare.reserve(xml.size()); }

    std::optional<std::string> write() {
        while (!m_rest.empty()) {
            if (!(m_rest.front() == '<' ? markup() : text()))
                return std::nullopt;
        }
        if (!textIsCheap())
            return std::nullopt;
        return std::move(m_bare);
    }

private:
    bool text() {
        const std::string_view plain = taken(std::min(m_rest.find('<'), m_rest.size()));
        m_escapes += static_cast<std::uint64_t>(std::count(plain.begin(), plain.end(), '&'));
        m_bare.append(plain);
        return true;
    }

    /// Returns false when unescaping the text so far would take too long: libplist moves the remaining text
    /// once per escape.
    bool textIsCheap() {
        constexpr std::uint64_t maxMovedBytes = std::uint64_t{1} << 31;
        m_movedBytes += m_escapes * (m_bare.size() - m_textStart);
        m_escapes = 0;
        return m_movedBytes <= maxMovedBytes;
    }

    bool markup() {
        if (m_rest.starts_with("<!--"))
            return takenUntil("-->", 4).has_value();
        if (m_rest.starts_with("<?"))
            return takenUntil("?>", 2).has_value();
        if (m_rest.starts_with("<![CDATA["))
            return characterData();
        if (m_rest.starts_with("<!DOCTYPE"))
            return documentType();
        return tag();
    }

    bool characterData() {
        const auto data = takenUntil("]]>", 9);
        if (!data)
            return false;
        for (const char c : *data) {
            m_escapes += c == '<' || c == '&';
            if (c == '<')
                m_bare += "&lt;";
            else if (c == '&')
                m_bare += "&amp;";
            else
                m_bare += c;
        }
        return true;
    }

    /// Rejects declarations in the document type: they can define entities, which property lists don't use.
    bool documentType() {
        const auto inside = takenTag();
        return inside && inside->find('[') == std::string_view::npos;
    }

    bool tag() {
        auto inside = takenTag();
        if (!inside)
            return false;
        const bool closes = inside->starts_with('/');
        const bool isEmpty = !closes && inside->ends_with('/');
        if (closes)
            inside->remove_prefix(1);
        const auto isNameCharacter = [](char c) {
            return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
        };
        const auto nameEnd = std::find_if_not(inside->begin(), inside->end(), isNameCharacter);
        const std::string_view name(inside->begin(), nameEnd);
        if (name.empty() || (closes && m_levels == 0) || (!closes && !m_budget.take(0)) || !textIsCheap())
            return false;
        m_bare.append(closes ? "</" : "<").append(name).append(isEmpty ? "/>" : ">");
        m_textStart = m_bare.size();
        if (closes)
            --m_levels;
        else if (!isEmpty)
            ++m_levels;
        return m_levels <= maxLevels + 1; // the enclosing <plist> doesn't count
    }

    /// Consumes a tag and returns the text between "<" and ">". A ">" in quotes doesn't end it.
    std::optional<std::string_view> takenTag() {
        char quote = '\0';
        for (std::size_t i = 1; i < m_rest.size(); ++i) {
            const char c = m_rest[i];
            if (quote == '\0' && c == '>')
                return taken(i + 1).substr(1, i - 1);
            if (c == quote)
                quote = '\0';
            else if (quote == '\0' && (c == '"' || c == '\''))
                quote = c;
        }
        return std::nullopt;
    }

    /// Consumes everything up to and including `end` and returns the text between the first `beginning` bytes
    /// and `end`.
    std::optional<std::string_view> takenUntil(std::string_view end, std::size_t beginning) {
        const std::size_t at = m_rest.find(end, beginning);
        if (at == std::string_view::npos)
            return std::nullopt;
        return taken(at + end.size()).substr(beginning, at - beginning);
    }

    std::string_view taken(std::size_t length) {
        const std::string_view front = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return front;
    }

    std::string_view m_rest;
    std::string m_bare;
    std::size_t m_levels = 0;
    std::size_t m_textStart = 0;
    std::uint64_t m_escapes = 0; ///< in the text since m_textStart
    std::uint64_t m_movedBytes = 0;
    Budget m_budget;
};

// Binary

/// Returns the big-endian unsigned number at `offset`, or nullopt when it is out of range or wider than 8
/// bytes.
std::optional<std::uint64_t> number(std::string_view bytes, std::uint64_t offset, std::uint64_t width) {
    if (width < 1 || width > 8 || offset > bytes.size() || bytes.size() - offset < width)
        return std::nullopt;
    std::uint64_t value = 0;
    for (const char c : bytes.substr(offset, width))
        value = value << 8 | static_cast<unsigned char>(c);
    return value;
}

/// An object of a binary list, with bytes of its own or with references to others.
struct Object {
    std::uint64_t ownBytes = 0;
    std::uint64_t references = 0; ///< offset of the first reference
    std::uint64_t referenceCount = 0;
};

class BinaryList {
public:
    static std::optional<BinaryList> opened(std::string_view bytes) {
        constexpr std::size_t trailerBytes = 32;
        if (bytes.size() < trailerBytes)
            return std::nullopt;
        const std::size_t trailer = bytes.size() - trailerBytes;
        BinaryList list;
        list.m_bytes = bytes;
        list.m_offsetWidth = *number(bytes, trailer + 6, 1);
        list.m_referenceWidth = *number(bytes, trailer + 7, 1);
        list.m_objectCount = *number(bytes, trailer + 8, 8);
        list.m_top = *number(bytes, trailer + 16, 8);
        list.m_offsets = *number(bytes, trailer + 24, 8);
        return list;
    }

    std::uint64_t top() const { return m_top; }

    std::optional<Object> object(std::uint64_t index) const {
        if (index >= m_objectCount || index > m_bytes.size())
            return std::nullopt;
        if (m_offsets > m_bytes.size())
            return std::nullopt;
        const auto offset = number(m_bytes, m_offsets + index * m_offsetWidth, m_offsetWidth);
        if (!offset)
            return std::nullopt;
        const auto marker = number(m_bytes, *offset, 1);
        if (!marker)
            return std::nullopt;
        const std::uint64_t type = *marker >> 4;
        std::uint64_t count = *marker & 0xF;
        std::uint64_t content = *offset + 1;
        if (count == 0xF && type >= 0x4) {
            // The count follows as an integer object.
            const auto countMarker = number(m_bytes, content, 1);
            if (!countMarker || *countMarker >> 4 != 0x1 || (*countMarker & 0xF) > 3)
                return std::nullopt;
            const std::uint64_t width = std::uint64_t{1} << (*countMarker & 0xF);
            const auto longCount = number(m_bytes, content + 1, width);
            if (!longCount || *longCount > m_bytes.size())
                return std::nullopt;
            count = *longCount;
            content += 1 + width;
        }
        const bool isDictionary = type == 0xD;
        if (isDictionary || type == 0xA || type == 0xB || type == 0xC)
            return Object{0, content, isDictionary ? 2 * count : count};
        const bool isUtf16 = type == 0x6;
        return Object{type >= 0x4 && type <= 0x7 ? (isUtf16 ? 3 * count : count) : 0, 0, 0};
    }

    std::optional<std::uint64_t> reference(const Object& object, std::uint64_t index) const {
        return number(m_bytes, object.references + index * m_referenceWidth, m_referenceWidth);
    }

private:
    std::string_view m_bytes;
    std::uint64_t m_offsetWidth = 0;
    std::uint64_t m_referenceWidth = 0;
    std::uint64_t m_objectCount = 0;
    std::uint64_t m_top = 0;
    std::uint64_t m_offsets = 0;
};

} // namespace

std::optional<std::string> bareXml(std::string_view document) {
    const std::optional<std::string> xml = decoded(document);
    if (!xml || xml->find('\0') != std::string::npos)
        return std::nullopt;
    return BareXmlWriter(*xml).write();
}

bool isBoundedBinary(std::string_view bytes) {
    const std::optional<BinaryList> list = BinaryList::opened(bytes);
    if (!list)
        return false;
    struct Level {
        Object object;
        std::uint64_t next = 0;
    };
    std::vector<Level> levels;
    Budget budget;
    // A cycle exceeds the limit of levels.
    const auto enter = [&](std::uint64_t index) {
        const std::optional<Object> object = list->object(index);
        if (!object || !budget.take(object->ownBytes) || levels.size() == maxLevels)
            return false;
        levels.push_back({*object});
        return true;
    };
    if (!enter(list->top()))
        return false;
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.object.referenceCount) {
            levels.pop_back();
            continue;
        }
        const auto index = list->reference(level.object, level.next++);
        if (!index || !enter(*index))
            return false;
    }
    return true;
}

} // namespace platform::property_list_guard
