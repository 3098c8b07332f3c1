#include "platform/property_list.h"

#include "tests/support/temporary_disk.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::PropertyList;
using Root = PropertyList::Root;
using namespace std::string_literals;

constexpr int malformedList = 3840;

/// `count` bytes of the number, the most significant first.
std::string bigEndian(std::uint64_t number, int count) {
    std::string bytes;
    for (int shift = 8 * (count - 1); shift >= 0; shift -= 8)
        bytes += static_cast<char>(number >> shift);
    return bytes;
}

/// Puts a binary property list together from objects that refer to each other by their position.
class BinaryList {
public:
    BinaryList& add(std::string object) {
        m_objects.push_back(std::move(object));
        return *this;
    }
    BinaryList& text(const std::string& ascii) { return add(marker(0x5, ascii.size()) + ascii); }
    BinaryList& utf16(const std::u16string& text) {
        std::string object = marker(0x6, text.size());
        for (const char16_t unit : text)
            object += bigEndian(unit, 2);
        return add(object);
    }
    BinaryList& array(const std::vector<unsigned>& items) {
        return add(marker(0xA, items.size()) + references(items));
    }
    BinaryList& dictionary(const std::vector<unsigned>& keys, const std::vector<unsigned>& values) {
        return add(marker(0xD, keys.size()) + references(keys) + references(values));
    }

    std::string bytes(std::uint64_t top = 0) const {
        std::string list = "bplist00";
        std::string offsets;
        for (const std::string& object : m_objects) {
            offsets += bigEndian(list.size(), 4);
            list += object;
        }
        const std::size_t offsetTable = list.size();
        return list + offsets + std::string(6, '\0') + "\4\2" + bigEndian(m_objects.size(), 8)
               + bigEndian(top, 8) + bigEndian(offsetTable, 8);
    }

    static std::string marker(unsigned type, std::size_t count) {
        if (count < 15)
            return {static_cast<char>(type << 4 | count)};
        return static_cast<char>(type << 4 | 15) + "\x12"s + bigEndian(count, 4);
    }

private:
    static std::string references(const std::vector<unsigned>& objects) {
        std::string bytes;
        for (const unsigned object : objects)
            bytes += bigEndian(object, 2);
        return bytes;
    }
    std::vector<std::string> m_objects;
};

const std::string binaryTrue = "\x09";
const std::string binaryFalse = "\x08";

std::string xml(const std::string& content) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Example//DTD PLIST 1.0//EN" "http://example.test/PropertyList-1.0.dtd">
<plist version="1.0">)"
           + content + "</plist>\n";
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}

/// The ASCII text in UTF-16, with its mark.
std::string utf16(std::string_view ascii, bool isBigEndian) {
    std::string bytes = isBigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char c : ascii)
        bytes += isBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return bytes;
}

TEST(PropertyList, ReadsValuesOfBothFormats) {
    const std::string xmlList = xml(R"(<dict>
        <key>Label</key><string>com.example.agent</string>
        <key>Name</key><string>Caf&#xE9; &amp; <![CDATA[<Co> &amp;]]><!-- not this --> GmbH</string>
        <key>Empty</key><string/>
        <key>Disabled</key><true/>
        <key>Enabled</key><false></false>
        <key>Number</key><integer>1</integer>
        <key>Nested</key><dict><key>Label</key><string>inner</string><key>Inner</key><true/></dict>
    </dict>)");
    const std::string binaryList = BinaryList()
                                       .dictionary({1, 3, 5, 6, 8, 10, 12}, {2, 4, 5, 7, 9, 11, 13})
                                       .text("Label")
                                       .text("com.example.agent")
                                       .text("Name")
                                       .utf16(u"Café & <Co> &amp; GmbH")
                                       .text("")
                                       .text("Disabled")
                                       .add(binaryTrue)
                                       .text("Enabled")
                                       .add(binaryFalse)
                                       .text("Number")
                                       .add("\x10\x01")
                                       .text("Nested")
                                       .dictionary({1, 14}, {3, 7})
                                       .text("Inner")
                                       .bytes();
    const std::pair<std::string, std::string> formats[] = {{xmlList, "Empty"}, {binaryList, ""}};
    for (const auto& [bytes, keyOfEmpty] : formats) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_TRUE(list);
        EXPECT_EQ(list->root(), Root::dictionary);
        EXPECT_EQ(list->string("Label"), "com.example.agent");
        EXPECT_EQ(list->string("Name"), "Café & <Co> &amp; GmbH");
        EXPECT_EQ(list->string(keyOfEmpty), "");
        EXPECT_EQ(list->boolean("Disabled"), true);
        EXPECT_EQ(list->boolean("Enabled"), false);
        // Another type counts as absent.
        EXPECT_EQ(list->boolean("Number"), std::nullopt);
        EXPECT_EQ(list->string("Number"), std::nullopt);
        EXPECT_EQ(list->string("Nested"), std::nullopt);
        EXPECT_EQ(list->boolean("Label"), std::nullopt);
        EXPECT_EQ(list->string("Disabled"), std::nullopt);
        EXPECT_EQ(list->boolean("Inner"), std::nullopt);
        EXPECT_EQ(list->string("label"), std::nullopt);
    }
}

TEST(PropertyList, KnowsTheTypeOfItsTop) {
    const struct {
        std::string bytes;
        Root root;
    } cases[] = {
        {xml("<dict/>"), Root::dictionary},
        {xml("<array><true/></array>"), Root::array},
        {xml("<string>top</string>"), Root::string},
        {xml("<integer>7</integer>"), Root::integer},
        {xml("<real>7.5</real>"), Root::real},
        {xml("<false/>"), Root::boolean},
        {xml("<date>2023-11-14T22:13:20Z</date>"), Root::date},
        {xml("<data>AAEC</data>"), Root::data},
        {BinaryList().array({1}).add(binaryTrue).bytes(), Root::array},
        {BinaryList().text("top").bytes(), Root::string},
        {BinaryList().add(binaryTrue).bytes(), Root::boolean},
        {BinaryList().text("Label").dictionary({0}, {0}).bytes(1), Root::dictionary},
    };
    for (const auto& [bytes, root] : cases) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_TRUE(list) << bytes;
        EXPECT_EQ(list->root(), root) << bytes;
        if (root != Root::dictionary) {
            EXPECT_EQ(list->string("Label"), std::nullopt);
            EXPECT_EQ(list->boolean("Label"), std::nullopt);
        }
    }
}

TEST(PropertyList, ReadsXmlHoweverItIsEncodedAndOpened) {
    const std::string list = "<dict><key>Label</key><string>a</string></dict>";
    const std::string openings[] = {
        xml(list),
        "\xEF\xBB\xBF" + xml(list),
        utf16(xml(list), true),
        utf16(xml(list), false),
        " \n\t" + xml(list),
        "<!-- by hand: <dict> -->\n" + xml(list),
        "<plist>" + list + "</plist>",
        "<plist version='>' other=\"/>\">" + list + "</plist>",
        list,
        "<!DOCTYPE plist>" + list,
        "<dict ><key\n>Label</key ><string xml:space='preserve'>a</string\t></dict>",
    };
    for (const std::string& bytes : openings) {
        const auto parsed = PropertyList::parse(bytes);
        ASSERT_TRUE(parsed) << bytes;
        EXPECT_EQ(parsed->string("Label"), "a") << bytes;
    }
}

std::string nestedXml(std::size_t levels) {
    return xml(repeated("<array>", levels) + repeated("</array>", levels));
}

/// Arrays in arrays, the innermost empty.
std::string nestedBinary(unsigned levels) {
    BinaryList list;
    for (unsigned i = 1; i < levels; ++i)
        list.array({i});
    return list.array({}).bytes();
}

/// Each array holds the next one twice: 2^levels ways to the last, which is `object`.
std::string sharedBinary(unsigned levels, const std::string& object) {
    BinaryList list;
    for (unsigned i = 1; i <= levels; ++i)
        list.array({i, i});
    return list.add(object).bytes();
}

TEST(PropertyList, RefusesWhatIsNone) {
    const std::string dictionary = BinaryList().dictionary({1}, {2}).text("Label").text("a").bytes();
    const std::string cases[] = {
        "",
        "<",
        "plain text",
        "{ Label = a; }", // the old text format
        "(a, b)",
        "\"a\"",
        "<plist/>",
        "<html><body>Not found</body></html>",
        xml("<dict><key>Label</key><string>a"),
        xml("<dict><key>Label</key><string>a</string>"),
        xml("<dict></array>"),
        xml("</dict>"),
        xml("<dict><string>a</string></dict>"),
        xml("<dict><key>Label</key><string>&made-up;</string></dict>"),
        xml("<dict><key>Label</key><string>\xFF</string></dict>"),
        xml("<dict><key>Label</key><string>"s + '\0' + "</string></dict>"),
        xml("<dict><!-- no end </dict>"),
        xml("<dict><key>Label</key><string><![CDATA[no end</string></dict>"),
        "<!DOCTYPE plist [<!ENTITY a 'b'>]>" + xml("<dict/>"),
        utf16(xml("<dict/>"), true) + "x",
        "bplist00",
        "bplist00" + std::string(32, '\0'),
        "bplist00" + std::string(32, '\xFF'),
        dictionary.substr(0, dictionary.size() - 1),
        dictionary.substr(0, dictionary.size() / 2),
        BinaryList().array({1}).bytes(),                                             // no such object
        BinaryList().add("\xDF\x13" + bigEndian(~std::uint64_t{0}, 8)).bytes(),      // 2^64 keys
        BinaryList().add("\x5F\x13" + bigEndian(std::uint64_t{1} << 63, 8)).bytes(), // a text of 2^63
        BinaryList().text("a").bytes(7),                                             // no such top
    };
    for (const std::string& bytes : cases) {
        const auto list = PropertyList::parse(bytes);
        ASSERT_FALSE(list) << bytes;
        EXPECT_EQ(list.error().domain, platform::cocoaDomain);
        EXPECT_EQ(list.error().code, malformedList);
    }
}

TEST(PropertyList, KeepsItsBounds) {
    EXPECT_TRUE(PropertyList::parse(nestedXml(512)));
    EXPECT_TRUE(PropertyList::parse(nestedBinary(512)));
    EXPECT_TRUE(PropertyList::parse(sharedBinary(4, binaryTrue)));

    const std::string longText = BinaryList::marker(0x5, 65'000) + std::string(65'000, 'x');
    const std::pair<const char*, std::string> hostile[] = {
        {"one level too deep", nestedXml(514)},
        {"one level too deep, binary", nestedBinary(513)},
        {"20,000 levels", nestedXml(20'000)},
        {"20,000 levels, binary", nestedBinary(20'000)},
        {"a million levels without end", repeated("<array>", 1'000'000)},
        {"a million lists in lists", repeated("<plist>", 1'000'000) + repeated("</plist>", 1'000'000)},
        {"levels between comments that look like ends", repeated("<array><!--</array>-->", 20'000)},
        {"levels between quoted ends", repeated("<array a='</array>'>", 20'000)},
        {"its own item", BinaryList().array({0}).bytes()},
        {"its own value", BinaryList().dictionary({1}, {0}).text("a").bytes()},
        {"a cycle of two", BinaryList().array({1}).array({0}).bytes()},
        {"2^40 ways to one value", sharedBinary(40, binaryTrue)},
        {"2^16 ways to a long text", sharedBinary(16, longText)},
        {"a million values", xml("<array>" + repeated("<true/>", 1'000'000) + "</array>")},
        {"3 million escapes", xml("<string>" + repeated("&amp;", 3'000'000) + "</string>")},
        {"more than 16 MiB", xml("<string>" + std::string(16 * 1024 * 1024, 'x') + "</string>")},
    };
    for (const auto& [what, bytes] : hostile) {
        const auto start = std::chrono::steady_clock::now();
        EXPECT_FALSE(PropertyList::parse(bytes)) << what;
        EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5)) << what;
    }

    const auto large = PropertyList::parse(
        xml("<dict><key>Label</key><string>" + std::string(65'536, 'x') + "</string></dict>"));
    ASSERT_TRUE(large);
    EXPECT_EQ(large->string("Label"), std::string(65'536, 'x'));
}

TEST(PropertyList, GivesUtf8WhateverABinaryListHolds) {
    const auto list = PropertyList::parse(BinaryList()
                                              .dictionary({1, 3, 5}, {2, 4, 6})
                                              .text("a")
                                              .text("caf\xE9")
                                              .text("b")
                                              .utf16({0xD83D, 0xDE42, u'x'})
                                              .text("c")
                                              .utf16({0xD83D, u'x'})
                                              .bytes());
    ASSERT_TRUE(list);
    EXPECT_EQ(list->string("a"), "caf\uFFFD");
    EXPECT_EQ(list->string("b"), "🙂x");
    const auto lone = list->string("c");
    ASSERT_TRUE(lone);
    EXPECT_TRUE(lone->ends_with('x')) << *lone;
}

TEST(PropertyList, ReadsRegularFilesOnly) {
    const TemporaryDisk disk;
    disk.write("~/a.plist", xml("<dict><key>Label</key><string>a</string></dict>"));
    disk.write("~/bad.plist", "junk");
    disk.make({"~/link.plist -> a.plist", "~/folder.plist/", "~/huge.plist 9000000000"});

    for (const char* path : {"/Users/me/a.plist", "/Users/me/link.plist"}) {
        const auto list = PropertyList::read(disk.disk(), path);
        ASSERT_TRUE(list) << path;
        EXPECT_EQ(list->string("Label"), "a");
    }
    const auto bad = PropertyList::read(disk.disk(), "/Users/me/bad.plist");
    ASSERT_FALSE(bad);
    EXPECT_EQ(bad.error().code, malformedList);
    const auto missing = PropertyList::read(disk.disk(), "/Users/me/none.plist");
    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.error().code, 260);
    EXPECT_FALSE(PropertyList::read(disk.disk(), "/Users/me/folder.plist"));
    EXPECT_FALSE(PropertyList::read(disk.disk(), "/Users/me/huge.plist"));
}

} // namespace
