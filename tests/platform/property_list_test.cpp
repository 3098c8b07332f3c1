#include "platform/property_lists/property_list.h"

#include "tests/support/codes.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::PropertyList;
using namespace std::string_literals;

/// Returns the `count` lowest bytes of the number, the most significant first.
std::string bigEndian(std::uint64_t number, int count) {
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

// The objects of a binary property list. They refer to each other by their index.

std::string object(unsigned type, std::size_t count, const std::string& content) {
    const bool isShort = count < 15;
    return static_cast<char>(type << 4 | (isShort ? count : 15))
           + (isShort ? "" : "\x12"s + bigEndian(count, 4)) + content;
}
std::string text(const std::string& ascii) {
    return object(0x5, ascii.size(), ascii);
}
std::string references(const std::vector<unsigned>& objects) {
    std::string bytes;
    for (const unsigned object : objects)
        bytes += bigEndian(object, 2);
    return bytes;
}
std::string array(const std::vector<unsigned>& items) {
    return object(0xA, items.size(), references(items));
}
std::string dictionary(const std::vector<unsigned>& keys, const std::vector<unsigned>& values) {
    return object(0xD, keys.size(), references(keys) + references(values));
}
const std::string yes = "\x09";

std::string binary(const std::vector<std::string>& objects) {
    std::string list = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += bigEndian(list.size(), 4);
        list += object;
    }
    return list + offsets + std::string(6, '\0') + "\4\2" + bigEndian(objects.size(), 8) + bigEndian(0, 8)
           + bigEndian(list.size(), 8);
}

std::string xml(const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\">" + content + "</plist>\n";
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string nestedXml(std::size_t levels) {
    return xml(repeated("<array>", levels) + repeated("</array>", levels));
}

/// Returns nested arrays, each of which holds the next one `times` times; the innermost holds `lowest`.
std::string nestedBinary(unsigned levels, unsigned times, const std::string& lowest) {
    std::vector<std::string> objects;
    for (unsigned i = 1; i <= levels; ++i)
        objects.push_back(array(std::vector<unsigned>(times, i)));
    objects.push_back(lowest);
    return binary(objects);
}

} // namespace

TEST(PropertyList, ReadsTopLevelValuesOfBothFormats) {
    const std::string content =
        "<dict ><key\n>Label</key ><string xml:space='preserve'>caf&#xE9; &lt;<![CDATA[<b>]]></string\t>"
        "<key>Disabled</key><true/><key>Nested</key><dict><key>Inner</key><true/></dict></dict>";
    std::string utf16 = "\xFE\xFF";
    for (const char c : xml(content))
        utf16 += std::string{'\0', c};
    const std::string utf16Label = object(0x6, 9, "\0c\0a\0f\0\xE9\0 \0<\0<\0b\0>"s);
    for (const std::string& bytes :
         {xml(content), content, utf16, "\xEF\xBB\xBF" + xml(content), "<!-- <dict> -->\n" + xml(content),
          "<plist version='>' other=\"/>\">" + content + "</plist>",
          binary({dictionary({1, 3, 5}, {2, 4, 6}), text("Label"s), utf16Label, text("Disabled"s), yes,
                  text("Nested"s), dictionary({7}, {4}), text("Inner"s)})}) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_TRUE(list) << bytes;
        EXPECT_EQ(list->string("Label"), "café <<b>") << bytes;
        EXPECT_EQ(list->boolean("Disabled"), true);
        for (const char* key : {"Nested", "Disabled", "label"})
            EXPECT_EQ(list->string(key), std::nullopt) << key;
        for (const char* key : {"Label", "Inner"})
            EXPECT_EQ(list->boolean(key), std::nullopt) << key;
    }
}

TEST(PropertyList, RefusesMalformedLists) {
    const std::string whole = binary({dictionary({1}, {2}), text("Label"s), text("a"s)});
    const std::string cases[] = {
        "",
        "{ Label = a; }",
        "<plist/>",
        xml("<dict><key>Label</key><string>a"),
        xml("<dict></array>"),
        xml("<dict><key>Label</key><string>&made-up;</string></dict>"),
        xml("<dict><key>Label</key><string>"s + '\0' + "</string></dict>"),
        "<!DOCTYPE plist [<!ENTITY a 'b'>]>" + xml("<dict/>"),
        "bplist00" + std::string(32, '\xFF'),
        whole.substr(0, whole.size() / 2),
        binary({array({1})}),                                        // a reference to no object
        binary({"\x5F\x13" + bigEndian(std::uint64_t{1} << 63, 8)}), // a text of 2^63 bytes
    };
    for (const std::string& bytes : cases)
        EXPECT_EQ(codes(PropertyList::parse(bytes)), "3840") << bytes;
}

TEST(PropertyList, RefusesListsThatWouldExhaustStackMemoryOrTime) {
    EXPECT_TRUE(PropertyList::parse(nestedXml(512)));
    EXPECT_TRUE(PropertyList::parse(nestedBinary(511, 1, array({}))));
    const std::string longText(65'536, 'x');
    EXPECT_TRUE(PropertyList::parse(xml("<string>" + longText + "</string>")));
    const std::pair<const char*, std::string> hostile[] = {
        {"one level too deep", nestedXml(514)},
        {"one level too deep, binary", nestedBinary(512, 1, array({}))},
        {"a million levels without end", repeated("<array>", 1'000'000)},
        {"levels between comments that look like ends", repeated("<array><!--</array>-->", 20'000)},
        {"levels between quoted ends", repeated("<array a='</array>'>", 20'000)},
        {"its own item", binary({array({0})})},
        {"a cycle of two", binary({array({1}), array({0})})},
        {"2^40 ways to one value", nestedBinary(40, 2, yes)},
        {"2^16 ways to a long text", nestedBinary(16, 2, text(longText))},
        {"a million values", xml("<array>" + repeated("<true/>", 1'000'000) + "</array>")},
        {"50,000 escapes, for each of which libplist moves the text",
         xml("<string>" + repeated("&amp;", 50'000) + "</string>")},
        {"more than 16 MiB", xml("<string>" + std::string(16 * 1024 * 1024, 'x') + "</string>")},
    };
    for (const auto& [what, bytes] : hostile)
        EXPECT_FALSE(PropertyList::parse(bytes)) << what;
}
