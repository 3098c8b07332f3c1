#include "platform/text.h"

#include <algorithm>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

TEST(Text, ShowsBytesThatAreNoTextAsReplacementCharacters) {
    const struct {
        std::string bytes;
        std::string shown;
    } cases[] = {
        {"", ""},
        {"plain ~", "plain ~"},
        {"tab\tand\nline", "tab\tand\nline"},
        {"é 日本 🙂", "é 日本 🙂"},
        {std::string("a\0b", 3), std::string("a\0b", 3)},
        {"\xFF", "\uFFFD"},
        {"caf\xE9.txt", "caf\uFFFD.txt"},
        {"\xC0\xAF", "\uFFFD\uFFFD"},           // an overlong "/": two bytes, neither starts anything
        {"\xE2\x82", "\uFFFD"},                 // cut short: one maximal subpart
        {"\xF0\x9F\x99z", "\uFFFDz"},           // cut short by another character
        {"\xED\xA0\x80", "\uFFFD\uFFFD\uFFFD"}, // a surrogate
        {"\xF4\x90\x80\x80", "\uFFFD\uFFFD\uFFFD\uFFFD"},
    };
    for (const auto& [bytes, shown] : cases)
        EXPECT_EQ(platform::displayed(bytes), shown);
}

TEST(Text, LowersCaseTheSameInEveryLocale) {
    const struct {
        std::string text;
        std::string lower;
    } cases[] = {
        {"Com.Example.IDE-2", "com.example.ide-2"},
        {"ÉTÉ", "été"},
        {"İI", "i\u0307i"},
        {"ΣΟΦΟΣ ΣΑΣ", "σοφος σας"},
        {"ẞ", "ß"},
        {"Ж\xFFЖ", "ж\uFFFDж"},
        {std::string("A\0B", 3), std::string("a\0b", 3)},
    };
    for (const auto& [text, lower] : cases)
        EXPECT_EQ(platform::lowercased(text), lower);
}

TEST(Text, CountsWhatPeoplePerceiveAsCharacters) {
    const struct {
        std::string text;
        std::size_t count;
    } cases[] = {
        {"", 0},       {"notes", 5},
        {"été", 3},    {"e\u0301te\u0301", 3},
        {"🇫🇷🇷🇸", 2},   {"👩‍👩‍👧", 1},
        {"a\r\nb", 3}, {"\xFF\xFE", 2},
        {"한국", 2},
    };
    for (const auto& [text, count] : cases)
        EXPECT_EQ(platform::characterCount(text), count) << text;
}

std::vector<std::string> sorted(const std::string& locale, std::vector<std::string> names) {
    const platform::NameOrder order(locale);
    std::stable_sort(names.begin(), names.end(),
                     [&](const std::string& a, const std::string& b) { return order.before(a, b); });
    return names;
}

TEST(Text, OrdersNamesAsListsShowThem) {
    const struct {
        const char* locale;
        std::vector<std::string> expected;
    } cases[] = {
        // Case doesn't count, so equal names stay as they came; accents come after plain letters.
        {"en_US", {"apple", "Apple", "APPLE", "Äpple", "banana", "Zebra"}},
        {"en_US", {"resume", "Resume", "résumé", "Resumes"}},
        // Figures are characters, punctuation and spaces count and come first.
        {"en_US", {"a b", "a-b", "a.b", "a10", "a2", "ab"}},
        {"sv_SE", {"Adam", "Zorn", "Ärla"}},
        {"de_DE", {"Adam", "Ärla", "Zorn"}},
        {"fr_FR", {"cote", "coté", "côte", "côté"}},
        {"th_TH", {"a b", "a-b", "ab"}},
        {"no such locale", {"a", "B", "c"}},
    };
    for (const auto& [locale, expected] : cases)
        EXPECT_EQ(sorted(locale, expected), expected) << locale;
    EXPECT_EQ(sorted("en_US", {"\xFF", "Zebra", "banana", "", "Äpple", "apple"}),
              (std::vector<std::string>{"", "apple", "Äpple", "banana", "Zebra", "\xFF"}));
    EXPECT_EQ(sorted("th_TH", {"ab", "a-b", "a b"}), (std::vector<std::string>{"a b", "a-b", "ab"}));

    const platform::NameOrder order("en_US");
    EXPECT_FALSE(order.before("Notes", "NOTES"));
    EXPECT_FALSE(order.before("NOTES", "Notes"));
    EXPECT_FALSE(order.before("é", "e\u0301")); // composed and decomposed are the same name to a reader
    EXPECT_FALSE(order.before("e\u0301", "é"));
}

TEST(Text, WorksOnSeveralThreadsAtOnce) {
    std::vector<std::thread> threads;
    std::vector<int> wrong(4, 0);
    for (std::size_t i = 0; i < wrong.size(); ++i) {
        threads.emplace_back([&wrong, i] {
            for (int round = 0; round < 2'000; ++round)
                wrong[i] +=
                    platform::characterCount("e\u0301té") != 3 || platform::lowercased("ÉTÉ") != "été";
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(wrong, std::vector<int>(4, 0));
}

} // namespace
