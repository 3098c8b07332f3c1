#include "platform/text/text.h"

#include "platform/files/path.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

TEST(Text, InvalidUtf8IsDisplayedAsReplacementCharacters) {
    const std::pair<std::string, std::string> cases[] = {{"é 日本 🙂\t\n", "é 日本 🙂\t\n"},
                                                         {std::string("a\0b", 3), std::string("a\0b", 3)},
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
        {"my-tool  AGENT_x.y", "My-Tool  Agent_X.Y"},
        {"3rd 2FA", "3Rd 2Fa"},
        {"o'neil ROCK’N’ROLL", "O'neil Rock’n’roll"},
        {"'quoted'", "'Quoted'"},
        {"O`NEIL", "O`neil"},
        {"x^y", "X^y"},
        {"e\u0301te\u0301 a\u0301b", "E\u0301te\u0301 A\u0301b"}, // combining accents
        {"ß ﬁsh ǆep iI", "Ss Fish ǅep Ii"},
        {"жЖ 𐐨𐐀 日本a", "Жж 𐐀𐐨 日本a"},
        {std::string("a\0b\xFFz", 5), std::string("A\0B\uFFFDZ", 7)}};
    for (const auto& [text, capital] : cases)
        EXPECT_EQ(platform::capitalized(text), capital) << text;
}

TEST(Text, NamesAreOrderedByTheRulesOfTheLocale) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"en_US", {"", "apple", "Äpple", "banana", "resume", "résumé", "Resumes", "Zebra", "\xFF"}},
        {"en_US", {"a b", "a-b", "a.b", "a10", "a2", "ab"}}, // punctuation counts, digits are characters
        {"sv_SE", {"Adam", "Zorn", "Ärla"}},
        {"th_TH", {"a b", "a-b", "ab"}}};
    for (const auto& [locale, expected] : cases) {
        const platform::NameOrder order(locale);
        std::vector<std::string> names(expected.rbegin(), expected.rend());
        std::sort(names.begin(), names.end(),
                  [&](const std::string& a, const std::string& b) { return order.before(a, b); });
        EXPECT_EQ(names, expected) << locale;
    }
    const platform::NameOrder order("en_US");
    EXPECT_FALSE(order.before("Notes", "NOTES") || order.before("NOTES", "Notes"));
}

TEST(Text, CountsUserPerceivedCharactersOnSeveralThreads) {
    const auto work = [] {
        for (int round = 0; round < 1'000; ++round)
            for (const auto& [text, count] :
                 {std::pair("e\u0301te\u0301", 3U), {"🇫🇷🇷🇸", 2U}, {"\xFF\xFE", 2U}})
                ASSERT_EQ(platform::characterCount(text), count) << text;
    };
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
}

TEST(Path, LastComponentSplitsIntoStemAndExtension) {
    const struct {
        const char *path, *last, *stem, *extension;
    } cases[]{{"/a/b/c.txt", "c.txt", "c", "txt"},
              {"/a/b.app/", "b.app", "b", "app"},
              {"//", "/", "/", ""},
              {"", "", "", ""},
              {"/a/.app", ".app", ".app", ""},
              {"/a/..app", "..app", "..app", ""},
              {"/a/....txt", "....txt", "...", "txt"},
              {"/a/a..app", "a..app", "a.", "app"},
              {"/a/Foo.", "Foo.", "Foo.", ""},
              {"/a.b/c", "c", "c", ""},
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
