#include "platform/text/text.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(Text, ShowsBytesThatAreNoTextAsReplacementCharacters) {
    const std::pair<std::string, std::string> cases[] = {
        {"é 日本 🙂\t\n", "é 日本 🙂\t\n"},
        {std::string("a\0b", 3), std::string("a\0b", 3)},
        {"caf\xE9.txt", "caf\uFFFD.txt"},
        {"\xC0\xAF", "\uFFFD\uFFFD"}, // an overlong "/": two bytes, neither starts anything
        {"\xE2\x82", "\uFFFD"},       // cut short: one maximal subpart
        {"\xF0\x9F\x99z", "\uFFFDz"},
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}}; // a surrogate
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(platform::displayed(bytes), shown);
}

TEST(Text, LowersCaseTheSameInEveryLocale) {
    const std::pair<std::string, std::string> cases[] = {{"Com.Example.IDE-2", "com.example.ide-2"},
                                                         {"İI", "i\u0307i"},
                                                         {"ΣΟΦΟΣ ΣΑΣ", "σοφος σας"},
                                                         {"Ж\xFFЖ", "ж\uFFFDж"},
                                                         {std::string("A\0B", 3), std::string("a\0b", 3)}};
    for (const auto& [text, lower] : cases)
        EXPECT_EQ(platform::lowercased(text), lower);
}

TEST(Text, CapitalizesEachWordTheSameInEveryLocale) {
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"my tool  AGENT", "My Tool  Agent"},
        {"my-app_x.y/z", "My-App_X.Y/Z"},
        {"3rd 2FA", "3Rd 2Fa"},
        {"o'neil ROCK’N’ROLL", "O'neil Rock’n’roll"},
        {"ÉTÉ e\u0301te\u0301 a\u0301b", "Été E\u0301te\u0301 A\u0301b"},
        {"ß ﬁsh ǆep ĳs iI", "Ss Fish ǅep Ĳs Ii"}, // no locale's own rules
        {"ΣΟΦΟΣ ΑΣ-ΑΣΑ", "Σοφος Ας-Ασα"},
        {"日本 🙂a жЖ 𐐨𐐀", "日本 🙂A Жж 𐐀𐐨"},
        {std::string("a\0b\xFFz", 5), std::string("A\0B\uFFFDZ", 7)},
        {std::string(65'536, 'X'), "X" + std::string(65'535, 'x')}};
    for (const auto& [text, capital] : cases)
        EXPECT_EQ(platform::capitalized(text), capital) << text;
}

TEST(Text, OrdersNamesAsListsShowThem) {
    const std::pair<const char*, std::vector<std::string>> cases[] = {
        {"en_US", {"", "apple", "Äpple", "banana", "resume", "résumé", "Resumes", "Zebra", "\xFF"}},
        // Figures are characters, punctuation and spaces count and come first.
        {"en_US", {"a b", "a-b", "a.b", "a10", "a2", "ab"}},
        {"sv_SE", {"Adam", "Zorn", "Ärla"}},
        {"de_DE", {"Adam", "Ärla", "Zorn"}},
        {"th_TH", {"a b", "a-b", "ab"}},
        {"no such locale", {"a", "B", "c"}}};
    for (const auto& [locale, expected] : cases) {
        const platform::NameOrder order(locale);
        std::vector<std::string> names(expected.rbegin(), expected.rend());
        std::sort(names.begin(), names.end(),
                  [&](const std::string& a, const std::string& b) { return order.before(a, b); });
        EXPECT_EQ(names, expected) << locale;
    }
    // Neither case nor composition tells names apart.
    const platform::NameOrder order("en_US");
    for (const auto& [one, other] : {std::pair("Notes", "NOTES"), std::pair("é", "e\u0301")})
        EXPECT_FALSE(order.before(one, other) || order.before(other, one)) << one;
}

TEST(Text, CountsWhatPeoplePerceiveAsCharactersOnSeveralThreadsAtOnce) {
    const auto work = [] {
        for (int round = 0; round < 1'000; ++round)
            for (const auto& [text, count] :
                 {std::pair("", 0U), {"e\u0301te\u0301", 3U}, {"🇫🇷🇷🇸", 2U}, {"\xFF\xFE", 2U}})
                ASSERT_EQ(platform::characterCount(text), count) << text;
    };
    std::vector<std::jthread> threads;
    for (int i = 0; i < 4; ++i)
        threads.emplace_back(work);
}

} // namespace
