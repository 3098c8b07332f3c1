#include "platform/text/format.h"
#include "platform/text/locale.h"
#include "platform/text/text.h"

#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::formatByteCount;
using platform::userLocale;

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();

// ICU reads the time zone once, at its first use: this one is 14 hours ahead of UTC.
const bool hasTimeZone = setenv("TZ", "Pacific/Kiritimati", 1) == 0;

} // namespace

TEST(Format, ByteCountsHaveDecimalUnitsAndRoundHalfToEven) {
    const std::pair<std::int64_t, std::string> cases[] = {{1, "1 byte"},
                                                          {1'500, "2 KB"},
                                                          {2'500, "2 KB"},
                                                          {999'500, "1 MB"}, // rounds up to the next unit
                                                          {999'950'000, "1 GB"},
                                                          {1'234'567'890, "1.23 GB"},
                                                          {999'995'000'000'000, "1 PB"},
                                                          {largest, "9.22 EB"}};
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(formatByteCount(bytes, "en_US"), text) << bytes;
        EXPECT_EQ(formatByteCount(-bytes, "en_US"), "-" + text) << bytes;
    }
    EXPECT_EQ(formatByteCount(-largest - 1, "en_US"), "-9.22 EB");
}

TEST(Format, ByteCountsAreWrittenInTheLanguageOfTheLocale) {
    const std::vector<std::string> cases[] = {{"en_GB", "Zero KB", "999 bytes", "12 KB", "9.22 EB"},
                                              {"fr_FR", "Zéro ko", "999 octets", "12 ko", "9,22 Eo"},
                                              {"de_DE", "Null kB", "999 Byte", "12 kB", "9,22 EB"},
                                              {"es_ES", "Cero kB", "999 bytes", "12 kB", "9,22 EB"},
                                              {"it_IT", "Zero kB", "999 byte", "12 kB", "9,22 EB"},
                                              {"pt_BR", "Zero kB", "999 bytes", "12 kB", "9,22 EB"},
                                              {"ru_RU", "Ноль кБ", "999 байт", "12 кБ", "9,22 ЭБ"},
                                              {"sr_Latn_RS", "Nula kB", "999 bajtova", "12 kB", "9,22 EB"},
                                              {"sr_Cyrl_RS", "Нула kB", "999 бајтова", "12 kB", "9,22 EB"},
                                              {"no such locale", "0 kB", "999 byte", "12 kB", "9.22 EB"}};
    for (const std::vector<std::string>& expected : cases) {
        std::vector<std::string> shown{expected.front()};
        for (const std::int64_t bytes : {std::int64_t{0}, std::int64_t{999}, std::int64_t{12'000}, largest}) {
            shown.push_back(formatByteCount(bytes, expected.front()));
            for (const std::string space : {"\u00A0", "\u202F"}) // no-break spaces of some locales
                if (const std::size_t found = shown.back().find(space); found != std::string::npos)
                    shown.back().replace(found, space.size(), " ");
        }
        EXPECT_EQ(shown, expected);
    }
}

TEST(Format, DatesAreThoseOfTheUsersTimeZone) {
    ASSERT_TRUE(hasTimeZone);
    const platform::Date evening(std::chrono::duration<double>(1'700'000'000)); // 22:13 in UTC
    using platform::formatMediumDate;
    EXPECT_EQ(formatMediumDate(evening, "fr_FR"), "15 nov. 2023");
    EXPECT_EQ(formatMediumDate(evening, "fr_FR", platform::TimeZone::utc), "14 nov. 2023");
    EXPECT_EQ(formatMediumDate(evening, "en_US"), "Nov 15, 2023");
    for (const double any : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()}) // must not crash
        (void)formatMediumDate(platform::Date(std::chrono::duration<double>(any)), "en_US");
}

TEST(Locale, FollowsTheEnvironmentAsPosixOrdersItsVariables) {
    const struct {
        const char *variables, *locales; // the latter of numbers, collation and dates
        std::vector<std::string> languages;
    } cases[]{
        {"", "en_US en_US en_US", {}},
        {"LC_ALL=POSIX LANG=fr_FR.UTF-8 LANGUAGE=fr", "en_US en_US en_US", {}},
        {"LC_TIME= LANG=pt_BR", "pt_BR pt_BR pt_BR", {"pt-BR"}},
        {"LANG=de_DE@euro LC_TIME=en_GB.UTF-8", "de_DE de_DE en_GB", {"de-DE"}},
        {"LC_ALL=sr_RS.UTF-8@latin LC_TIME=it_IT", "sr_Latn_RS sr_Latn_RS sr_Latn_RS", {"sr-Latn-RS"}},
        {"LC_MESSAGES=it_IT.UTF-8 LC_COLLATE=C LANG=fr_FR", "fr_FR en_US fr_FR", {"it-IT"}},
        {"LANG=fr_FR LC_NUMERIC=de_DE LC_COLLATE=sv_SE LC_TIME=en_GB LANGUAGE=fr_CH:sr_RS@cyrillic::C:de",
         "de_DE sv_SE en_GB",
         {"fr-CH", "sr-Cyrl-RS", "de"}}};
    for (const auto& [variables, locales, languages] : cases) {
        for (const char* name :
             {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LC_NUMERIC", "LC_COLLATE", "LC_TIME", "LANG"})
            unsetenv(name);
        std::istringstream settings(variables);
        for (std::string name, value;
             std::getline(settings, name, '=') && std::getline(settings, value, ' ');)
            setenv(name.c_str(), value.c_str(), 1);
        using enum platform::LocaleCategory;
        EXPECT_EQ(userLocale(numeric) + ' ' + userLocale(collate) + ' ' + userLocale(time), locales)
            << variables;
        EXPECT_EQ(platform::preferredLanguages(), languages) << variables;
    }
    // Each use follows its own category of the last case.
    EXPECT_EQ(formatByteCount(0), formatByteCount(0, "de_DE"));
    EXPECT_TRUE(platform::NameOrder().before("Z", "Ä")); // as in Swedish
    EXPECT_EQ(platform::formatMediumDate({}), platform::formatMediumDate({}, "en_GB"));
}
