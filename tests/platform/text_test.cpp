#include "platform/text/text.h"

#include "platform/files/path.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace std::string_literals;

TEST(Text, IsConvertedIndependentlyOfTheLocaleAndShowsInvalidUtf8AsReplacementCharacters) {
    using namespace platform;
    const struct {
        std::string (*convert)(std::string_view);
        const char *text, *result;
    } cases[]{{displayed, "é 日本 🙂\t\n caf\xE9.txt", "é 日本 🙂\t\n caf\uFFFD.txt"},
              {displayed, "\xF0\x9F\x99z", "\uFFFDz"}, // a truncated sequence
              {lowercased, "Com.Example.IDE-2", "com.example.ide-2"},
              {lowercased, "İI ΣΟΦΟΣ ΣΑΣ", "i\u0307i σοφος σας"},
              {lowercased, "Ж\xFFЖ", "ж\uFFFDж"},
              {capitalized, "my-tool  AGENT_x.y", "My-Tool  Agent_X.y"}, // a full stop is case-ignorable
              {capitalized, "3rd 2FA 'quoted' O`NEIL x^y", "3Rd 2Fa 'Quoted' O`neil X^y"},
              {capitalized, "o'neil ROCK’N’ROLL", "O'neil Rock’n’roll"},
              {capitalized, "e\u0301te\u0301 a\u0301b", "E\u0301te\u0301 A\u0301b"}, // combining accents
              {capitalized, "ß ﬁsh ǆep iI жЖ 𐐨𐐀 日本a", "Ss Fish ǅep Ii Жж 𐐀𐐨 日本A"},
              {capitalized, "a\xFFz", "A\uFFFDZ"}};
    for (const auto& [convert, text, result] : cases)
        EXPECT_EQ(convert(text), result) << text;
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
              {"/a/b c. d", "b c. d", "b c", " d"}};
    for (const auto& [path, last, stem, extension] : cases) {
        EXPECT_EQ(platform::lastComponent(path), last) << path;
        EXPECT_EQ(platform::stem(path), stem) << path;
        EXPECT_EQ(platform::extension(path), extension) << path;
    }
}

TEST(Path, IsStandardizedAsText) {
    const std::pair<std::string, const char*> cases[]{
        {"/a//b/./c/.", "/a/b/c"}, {"/a/../b/", "/b"},   {"/../../a", "/a"},  {"/..", "/"},
        {"/a/...", "/a/..."},      {"a/../b", "a/../b"}, {"/a\0/../b"s, "/b"}};
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
