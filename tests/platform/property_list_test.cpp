#include "platform/property_lists/property_list.h"

#include "tests/support/codes.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::PropertyList;
using namespace std::string_literals;

/// `count` bytes of the number, the most significant first.
std::string bigEndian(std::uint64_t number, int count) {
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

// The objects of a binary property list, which refer to each other by their position.

std::string object(unsigned type, std::size_t count, const std::string& content) {
    const bool isShort = count < 15;
    return static_cast<char>(type << 4 | (isShort ? count : 15))
           + (isShort ? "" : "\x12"s + bigEndian(count, 4)) + content;
}
std::string text(const std::string& ascii) {
    return object(0x5, ascii.size(), ascii);
}
std::string text(const std::u16string& utf16) {
    std::string units;
    for (const char16_t unit : utf16)
        units += bigEndian(unit, 2);
    return object(0x6, utf16.size(), units);
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
const std::string no = "\x08";

std::string binary(const std::vector<std::string>& objects, std::uint64_t top = 0) {
    std::string list = "bplist00";
    std::string offsets;
    for (const std::string& object : objects) {
        offsets += bigEndian(list.size(), 4);
        list += object;
    }
    return list + offsets + std::string(6, '\0') + "\4\2" + bigEndian(objects.size(), 8) + bigEndian(top, 8)
           + bigEndian(list.size(), 8);
}

std::string xml(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Example//DTD PLIST 1.0//EN" "http://example.test/PropertyList-1.0.dtd">
<plist version="1.0">)"
           + content + "</plist>\n";
}

/// The ASCII text in UTF-16, with its mark.
std::string utf16(std::string_view ascii, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii)
        bytes += isBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return bytes;
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

/// Arrays that each hold the next one so many times; the last one is `lowest`.
std::string nestedBinary(unsigned levels, unsigned times, const std::string& lowest) {
    std::vector<std::string> objects;
    for (unsigned i = 1; i <= levels; ++i)
        objects.push_back(array(std::vector<unsigned>(times, i)));
    objects.push_back(lowest);
    return binary(objects);
}

TEST(PropertyList, ReadsValuesOfBothFormats) {
    const std::string lists[] = {
        xml(R"(<dict>
            <key>Label</key><string>com.example.agent</string>
            <key>Name</key><string>Caf&#xE9; &amp; <![CDATA[<Co> &amp;]]><!-- not this --> 🙂</string>
            <key></key><string/>
            <key>Disabled</key><true/>
            <key>Enabled</key><false></false>
            <key>Number</key><integer>1</integer>
            <key>Nested</key><dict><key>Label</key><string>inner</string><key>Inner</key><true/></dict>
        </dict>)"),
        binary({dictionary({1, 3, 5, 6, 8, 10, 12}, {2, 4, 5, 7, 9, 11, 13}), text("Label"s),
                text("com.example.agent"s), text("Name"s), text(u"Café & <Co> &amp; 🙂"s), text(""s),
                text("Disabled"s), yes, text("Enabled"s), no, text("Number"s), "\x10\x01", text("Nested"s),
                dictionary({1, 14}, {3, 7}), text("Inner"s)})};
    for (const std::string& bytes : lists) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_TRUE(list);
        EXPECT_EQ(list->root(), PropertyList::Root::dictionary);
        EXPECT_EQ(list->string("Label"), "com.example.agent");
        EXPECT_EQ(list->string("Name"), "Café & <Co> &amp; 🙂");
        EXPECT_EQ(list->string(""), "");
        EXPECT_EQ(list->boolean("Disabled"), true);
        EXPECT_EQ(list->boolean("Enabled"), false);
        // Another type counts as absent.
        for (const char* key : {"Number", "Nested", "Disabled", "label"})
            EXPECT_EQ(list->string(key), std::nullopt) << key;
        for (const char* key : {"Number", "Label", "Inner"})
            EXPECT_EQ(list->boolean(key), std::nullopt) << key;
    }
}

TEST(PropertyList, ReadsTextHoweverItIsEncodedAndOpened) {
    const std::string list = "<dict><key>Label</key><string>a</string></dict>";
    const std::string openings[] = {
        "\xEF\xBB\xBF" + xml(list),
        utf16(xml(list), true),
        utf16(xml(list), false),
        " \n\t" + xml(list),
        "<!-- by hand: <dict> -->\n" + xml(list),
        "<plist version='>' other=\"/>\">" + list + "</plist>",
        list,
        "<!DOCTYPE plist>" + list,
        "<dict ><key\n>Label</key ><string xml:space='preserve'>a</string\t></dict>"};
    for (const std::string& bytes : openings) {
        const auto parsed = PropertyList::parse(bytes);
        ASSERT_TRUE(parsed) << bytes;
        EXPECT_EQ(parsed->string("Label"), "a") << bytes;
    }
    // What a binary one holds becomes UTF-8 anyway.
    const auto binaryList =
        PropertyList::parse(binary({dictionary({1, 2}, {3, 4}), text("a"s), text("b"s), text("caf\xE9"s),
                                    text(std::u16string{0xD83D, u'x'})}));
    ASSERT_TRUE(binaryList);
    EXPECT_EQ(binaryList->string("a"), "caf\uFFFD");
    EXPECT_TRUE(binaryList->string("b").value_or("").ends_with('x')) << "after a lone surrogate";
}

TEST(PropertyList, RefusesWhatIsNone) {
    const std::string whole = binary({dictionary({1}, {2}), text("Label"s), text("a"s)});
    const std::string cases[] = {
        "",
        "plain text",
        "{ Label = a; }", // the old text format
        "<plist/>",
        "<html><body>Not found</body></html>",
        xml("<dict><key>Label</key><string>a"),
        xml("<dict></array>"),
        xml("<dict><string>a</string></dict>"),
        xml("<dict><key>Label</key><string>&made-up;</string></dict>"),
        xml("<dict><key>Label</key><string>\xFF</string></dict>"),
        xml("<dict><key>Label</key><string>"s + '\0' + "</string></dict>"),
        xml("<dict><!-- no end </dict>"),
        "<!DOCTYPE plist [<!ENTITY a 'b'>]>" + xml("<dict/>"),
        utf16(xml("<dict/>"), true) + "x",
        "bplist00" + std::string(32, '\xFF'),
        whole.substr(0, whole.size() - 1),
        whole.substr(0, whole.size() / 2),
        binary({array({1})}),                                        // no such object
        binary({"\xDF\x13" + bigEndian(~std::uint64_t{0}, 8)}),      // 2^64 keys
        binary({"\x5F\x13" + bigEndian(std::uint64_t{1} << 63, 8)}), // a text of 2^63
        binary({text("a"s)}, 7),                                     // no such top
    };
    for (const std::string& bytes : cases)
        EXPECT_EQ(codes(PropertyList::parse(bytes)), "3840") << bytes;
}

TEST(PropertyList, KeepsItsBounds) {
    EXPECT_TRUE(PropertyList::parse(nestedXml(512)));
    EXPECT_TRUE(PropertyList::parse(nestedBinary(511, 1, array({}))));
    EXPECT_TRUE(PropertyList::parse(nestedBinary(4, 2, yes)));
    const std::string longText(65'536, 'x');
    const auto list = PropertyList::parse(xml("<dict><key>a</key><string>" + longText + "</string></dict>"));
    ASSERT_TRUE(list);
    EXPECT_EQ(list->string("a"), longText);

    const std::pair<const char*, std::string> hostile[] = {
        {"one level too deep", nestedXml(514)},
        {"one level too deep, binary", nestedBinary(512, 1, array({}))},
        {"20,000 levels", nestedXml(20'000)},
        {"20,000 levels, binary", nestedBinary(20'000, 1, array({}))},
        {"a million levels without end", repeated("<array>", 1'000'000)},
        {"a million lists in lists", repeated("<plist>", 1'000'000) + repeated("</plist>", 1'000'000)},
        {"levels between comments that look like ends", repeated("<array><!--</array>-->", 20'000)},
        {"levels between quoted ends", repeated("<array a='</array>'>", 20'000)},
        {"its own item", binary({array({0})})},
        {"its own value", binary({dictionary({1}, {0}), text("a"s)})},
        {"a cycle of two", binary({array({1}), array({0})})},
        {"2^40 ways to one value", nestedBinary(40, 2, yes)},
        {"2^16 ways to a long text", nestedBinary(16, 2, text(longText))},
        {"a million values", xml("<array>" + repeated("<true/>", 1'000'000) + "</array>")},
        {"3 million escapes", xml("<string>" + repeated("&amp;", 3'000'000) + "</string>")},
        {"more than 16 MiB", xml("<string>" + std::string(16 * 1024 * 1024, 'x') + "</string>")},
    };
    for (const auto& [what, bytes] : hostile) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(PropertyList::parse(bytes)) << what;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << what;
    }
}

} // namespace
