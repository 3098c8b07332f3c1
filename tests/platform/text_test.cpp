#include "platform/text/text.h"

#include "platform/files/path.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

TEST(Text, InvalidUtf8IsDisplayedAsReplacementCharacters) {
    const std::pair<std::string, std::string> cases[] = {{"é 日本 🙂\t\n", "é 日本 🙂\t\n"},
                                                         {"caf\xE9.txt", "caf\uFFFD.txt"},
                                                         {"\xC0\xAF", "\uFFFD\uFFFD"},  // overlong "/"
                                                         {"\xF0\x9F\x99z", "\uFFFDz"}}; // truncated sequence
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(platform::displayed(bytes), shown);
}

TEST(Text, LowersCaseIndependentlyOfTheLocale) {
    const std::pair<std::string, std::string> cases[] = {{"Com.Example.IDE-2", "com.example.ide-2"},
                                                         {"İI", "i\u0307i"},
                                                         {"ΣΟΦΟΣ ΣΑΣ", "σοφος σας"},
                                                         {"Ж\xFFЖ", "ж\uFFFDж"}};
    for (const auto& [text, lower] : cases)
        EXPECT_EQ(platform::lowercased(text), lower);
}

TEST(Text, CapitalizesEachWordIndependentlyOfTheLocale) {
    const std::pair<std::string, std::string> cases[] = {
        {"my-tool  AGENT_x.y", "My-Tool  Agent_X.y"}, // a full stop is case-ignorable
        {"3rd 2FA", "3Rd 2Fa"},
        {"o'neil ROCK’N’ROLL", "O'neil Rock’n’roll"},
        {"'quoted'", "'Quoted'"},
        {"O`NEIL", "O`neil"},
        {"x^y", "X^y"},
        {"e\u0301te\u0301 a\u0301b", "E\u0301te\u0301 A\u0301b"}, // combining accents
        {"ß ﬁsh ǆep iI", "Ss Fish ǅep Ii"},
        {"жЖ 𐐨𐐀 日本a", "Жж 𐐀𐐨 日本A"},
        {"a\xFFz", "A\uFFFDZ"}};
    for (const auto& [text, capital] : cases)
        EXPECT_EQ(platform::capitalized(text), capital) << text;
}

TEST(Text, NamesAreOrderedByTheRulesOfTheLocale) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"en_US", {"", "a b", "a-b", "a10", "a2", "apple", "Äpple", "Resumes", "Zebra", "\xFF"}},
        {"sv_SE", {"Adam", "Zorn", "Ärla"}},
        {"th_TH", {"a b", "a-b", "ab"}}};
    for (const auto& [locale, expected] : cases) {
        const platform::NameOrder order(locale);
        for (std::size_t i = 1; i < expected.size(); ++i)
            EXPECT_TRUE(order.before(expected[i - 1], expected[i])) << locale << " " << expected[i];
    }
    EXPECT_FALSE(platform::NameOrder("en_US").before("Notes", "NOTES"));
    EXPECT_FALSE(platform::NameOrder("en_US").before("NOTES", "Notes"));
}

TEST(Text, CountsUserPerceivedCharacters) {
    for (const auto& [text, count] : {std::pair("e\u0301te\u0301", 3U), {"🇫🇷🇷🇸", 2U}, {"\xFF\xFE", 2U}})
        EXPECT_EQ(platform::characterCount(text), count) << text;
}

TEST(Path, LastComponentSplitsIntoStemAndExtension) {
    const struct {
        const char *path, *last, *stem, *extension;
    } cases[]{{"/a/b/c.txt", "c.txt", "c", "txt"},
              {"/a/b.app/", "b.app", "b", "app"},
              {"", "", "", ""},
              {"/a/.app", ".app", ".app", ""},
              {"/a/..app", "..app", "..app", ""},
              {"/a/....txt", "....txt", "...", "txt"},
              {"/a/a..app", "a..app", "a.", "app"},
              {"/a/Foo.", "Foo.", "Foo.", ""},
              {"/a/Read me. now", "Read me. now", "Read me", " now"}};
    for (const auto& [path, last, stem, extension] : cases) {
        EXPECT_EQ(platform::lastComponent(path), last) << path;
        EXPECT_EQ(platform::stem(path), stem) << path;
        EXPECT_EQ(platform::extension(path), extension) << path;
    }
}

TEST(Path, IsStandardisedAsText) {
    const std::pair<std::string, const char*> cases[]{{"/a//b/./c/.", "/a/b/c"},
                                                      {"/a/../b/", "/b"},
                                                      {"/../../a", "/a"},
                                                      {"/..", "/"},
                                                      {"/a/...", "/a/..."},
                                                      {"a/../b", "a/../b"},
                                                      {std::string("/a\0/../b", 8), "/b"}};
    for (const auto& [path, standard] : cases)
        EXPECT_EQ(platform::standardized(path), standard) << path;
}

TEST(Path, IsBelowAFolderByWholeNames) {
    const struct {
        const char *path, *folder;
        bool below;
    } cases[]{{"/a/b/c", "/a", true}, {"/a", "/a", false}, {"/a/", "/a", false}, {"/ab", "/a", false},
              {"/a", "/", true},      {"/", "/", false},   {"a/b", "/", false},  {"/A/b", "/a", false}};
    for (const auto& [path, folder, below] : cases)
        EXPECT_EQ(platform::isBelow(path, folder), below) << path << " below " << folder;
}
