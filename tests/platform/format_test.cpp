#include "platform/text/format.h"
#include "platform/text/locale.h"

#include <cstdlib>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::formatByteCount;

platform::Date date(double seconds) {
    return platform::Date(std::chrono::duration<double>(seconds));
}

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

TEST(Format, WritesByteCountsInDecimalUnits) {
    const std::pair<std::int64_t, std::string> cases[] = {
        {1, "1 byte"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {1'500, "2 KB"}, // halves to even
        {2'500, "2 KB"},
        {2'501, "3 KB"},
        {999'500, "1 MB"}, // what rounds to a thousand moves up
        {1'050'001, "1.1 MB"},
        {999'950'000, "1 GB"},
        {1'234'567'890, "1.23 GB"},
        {999'995'000'000, "1 TB"},
        {999'995'000'000'000, "1 PB"},
        {largest, "9.22 EB"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(formatByteCount(bytes, "en_US"), text) << bytes;
        EXPECT_EQ(formatByteCount(-bytes, "en_US"), "-" + text) << bytes;
    }
    EXPECT_EQ(formatByteCount(0, "en_US"), "Zero KB");
    EXPECT_EQ(formatByteCount(-largest - 1, "en_US"), "-9.22 EB");
}

TEST(Format, WritesByteCountsInTheLanguageOfTheLocale) {
    const auto plain = [](std::string text) { // some languages keep figure and unit together
        for (const std::string space : {"\u00A0", "\u202F"})
            for (std::size_t at = text.find(space); at != std::string::npos; at = text.find(space))
                text.replace(at, space.size(), " ");
        return text;
    };
    const std::vector<std::string> cases[] = {
        {"en_GB", "Zero KB", "1 byte", "999 bytes", "12 KB", "1.23 GB", "9.22 EB"},
        {"fr_FR", "Zéro ko", "1 octet", "999 octets", "12 ko", "1,23 Go", "9,22 Eo"},
        {"de_DE", "Null kB", "1 Byte", "999 Byte", "12 kB", "1,23 GB", "9,22 EB"},
        {"es_ES", "Cero kB", "1 byte", "999 bytes", "12 kB", "1,23 GB", "9,22 EB"},
        {"it_IT", "Zero kB", "1 byte", "999 byte", "12 kB", "1,23 GB", "9,22 EB"},
        {"pt_BR", "Zero kB", "1 byte", "999 bytes", "12 kB", "1,23 GB", "9,22 EB"},
        {"ru_RU", "Ноль кБ", "1 байт", "999 байт", "12 кБ", "1,23 ГБ", "9,22 ЭБ"},
        {"sr_Latn_RS", "Nula kB", "1 bajt", "999 bajtova", "12 kB", "1,23 GB", "9,22 EB"},
        {"sr_Cyrl_RS", "Нула kB", "1 бајт", "999 бајтова", "12 kB", "1,23 GB", "9,22 EB"},
        {"no such locale", "0 kB", "1 byte", "999 byte", "12 kB", "1.23 GB", "9.22 EB"}};
    for (const std::vector<std::string>& expected : cases) {
        std::vector<std::string> shown{expected.front()};
        for (const std::int64_t bytes : {std::int64_t{0}, std::int64_t{1}, std::int64_t{999},
                                         std::int64_t{12'000}, std::int64_t{1'230'000'000}, largest})
            shown.push_back(plain(formatByteCount(bytes, expected.front())));
        EXPECT_EQ(shown, expected);
    }
}

TEST(Format, WritesDatesInTheMediumStyle) {
    const auto shown = [](double seconds, const char* locale) {
        return platform::formatMediumDate(date(seconds), locale, platform::TimeZone::utc);
    };
    EXPECT_EQ(shown(1'700'000'000, "fr_FR"), "14 nov. 2023");
    EXPECT_EQ(shown(-0.5, "en_US"), "Dec 31, 1969");
    for (const double any : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) // a file can bear them
        (void)shown(any, "en_US");
}

TEST(Locale, IsTheUsersAndSoAreThePreferredLanguages) {
    const struct {
        std::map<std::string, std::string> variables;
        const char* locale;
        std::vector<std::string> languages;
    } cases[]{{{}, "en_US", {}},
              {{{"LANG", "C.UTF-8"}, {"LANGUAGE", "fr:en"}}, "en_US", {}},
              {{{"LC_ALL", "POSIX"}, {"LANG", "fr_FR.UTF-8"}}, "en_US", {}},
              {{{"LANGUAGE", "fr"}}, "en_US", {}},
              {{{"LANG", "../../x"}}, "en_US", {}},
              {{{"LANG", "pt_BR"}, {"LC_TIME", ""}}, "pt_BR", {"pt-BR"}},
              {{{"LANG", "de_DE@euro"}, {"LC_TIME", "en_GB.UTF-8"}}, "en_GB", {"de-DE"}},
              {{{"LC_ALL", "sr_RS.UTF-8@latin"}, {"LC_MESSAGES", "it_IT"}, {"LC_TIME", "de_DE"}},
               "sr_Latn_RS",
               {"sr-Latn-RS"}},
              {{{"LC_MESSAGES", "it_IT.UTF-8"}, {"LANG", "en_US.UTF-8"}}, "en_US", {"it-IT"}},
              {{{"LANG", "fr_FR.UTF-8"}, {"LANGUAGE", ":"}}, "fr_FR", {"fr-FR"}},
              {{{"LANG", "fr_FR.UTF-8"}, {"LANGUAGE", "fr_CH:sr_RS@cyrillic::C:de"}},
               "fr_FR",
               {"fr-CH", "sr-Cyrl-RS", "de"}}};
    for (const auto& [variables, locale, languages] : cases) {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LC_TIME", "LANG"})
            unsetenv(name);
        for (const auto& [name, value] : variables)
            setenv(name.c_str(), value.c_str(), 1);
        EXPECT_EQ(platform::userLocale(), locale) << testing::PrintToString(variables);
        EXPECT_EQ(platform::preferredLanguages(), languages) << testing::PrintToString(variables);
    }
    // Shown in that of the last case.
    EXPECT_EQ(formatByteCount(12'000), formatByteCount(12'000, "fr_FR"));
    EXPECT_EQ(platform::formatMediumDate(date(1'700'000'000)).find("14 nov. 2023"), 0U);
}

} // namespace
