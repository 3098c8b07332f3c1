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

/// Returns a binary property list of these objects. An object begins with its type (5 ASCII, 6 UTF-16, A
/// array, D dictionary) and its count in one byte. Arrays and dictionaries hold two-byte indices of objects.
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
        objects.push_back(static_cast<char>(0xA0 + times) + repeated(bigEndian(i, 2), times));
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
    for (const std::string& bytes :
         {xml(content), content, utf16, "\xEF\xBB\xBF" + xml(content), "<!-- <dict> -->\n" + xml(content),
          "<plist version='>' other=\"/>\">" + content + "</plist>",
          binary({"\xD3\0\1\0\3\0\5\0\2\0\4\0\6"s, "\x55Label"s, "\x69\0c\0a\0f\0\xE9\0 \0<\0<\0b\0>"s,
                  "\130Disabled"s, "\x09"s, "\x56Nested"s, "\xD1\0\7\0\4"s, "\x55Inner"s})}) {
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
    const std::string whole = binary({"\xD1\0\1\0\2"s, "\x55Label", "\x51z"});
    // The last two refer to no object, and hold a text of 2^63 bytes.
    for (const std::string& bytes :
         {""s, "{ Label = a; }"s, "<plist/>"s, xml("<dict><key>Label</key><string>a"), xml("<dict></array>"),
          xml("<dict><key>Label</key><string>&made-up;</string></dict>"),
          xml("<dict><key>Label</key><string>"s + '\0' + "</string></dict>"),
          "<!DOCTYPE plist [<!ENTITY a 'b'>]>" + xml("<dict/>"), "bplist00" + std::string(32, '\xFF'),
          whole.substr(0, whole.size() / 2), binary({"\xA1\0\1"s}),
          binary({"\x5F\x13" + bigEndian(std::uint64_t{1} << 63, 8)})})
        EXPECT_EQ(codes(PropertyList::parse(bytes)), "3840") << bytes;
}

TEST(PropertyList, RefusesListsThatWouldExhaustStackMemoryOrTime) {
    EXPECT_TRUE(PropertyList::parse(nestedXml(512)));
    EXPECT_TRUE(PropertyList::parse(nestedBinary(511, 1, "\xA0")));
    const std::string longText(65'536, 'x');
    EXPECT_TRUE(PropertyList::parse(xml("<string>" + longText + "</string>")));
    const std::pair<const char*, std::string> hostile[] = {
        {"one level too deep", nestedXml(514)},
        {"one level too deep, binary", nestedBinary(512, 1, "\xA0")},
        {"a million levels without end", repeated("<array>", 1'000'000)},
        {"levels between comments that look like ends", repeated("<array><!--</array>-->", 20'000)},
        {"levels between quoted ends", repeated("<array a='</array>'>", 20'000)},
        {"its own item", binary({"\xA1\0\0"s})},
        {"a cycle of two", binary({"\xA1\0\1"s, "\xA1\0\0"s})},
        {"2^40 ways to one value", nestedBinary(40, 2, "\x09")},
        {"2^16 ways to a long text",
         nestedBinary(16, 2, "\x5F\x12" + bigEndian(longText.size(), 4) + longText)},
        {"a million values", xml("<array>" + repeated("<true/>", 1'000'000) + "</array>")},
        {"50,000 escapes, for each of which libplist moves the text",
         xml("<string>" + repeated("&amp;", 50'000) + "</string>")},
        {"more than 16 MiB", xml("<string>" + std::string(16 * 1024 * 1024, 'x') + "</string>")},
    };
    for (const auto& [what, bytes] : hostile)
        EXPECT_FALSE(PropertyList::parse(bytes)) << what;
}
