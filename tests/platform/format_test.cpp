#include "platform/format.h"
#include "platform/locale.h"

#include <cstdlib>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using platform::formatByteCount;

using Variables = std::map<std::string, std::string>;

/// Sets the variables that say which language the user speaks, all others of them unset; puts them back.
class Environment {
public:
    explicit Environment(const Variables& values) {
        for (const char* name : {"LANGUAGE", "LC_ALL", "LC_MESSAGES", "LC_TIME", "LANG"}) {
            const char* before = std::getenv(name);
            m_before[name] = before == nullptr ? std::nullopt : std::optional<std::string>(before);
            const auto value = values.find(name);
            set(name, value == values.end() ? std::nullopt : std::optional(value->second));
        }
    }
    Environment(const Environment&) = delete;
    Environment& operator=(const Environment&) = delete;
    ~Environment() {
        for (const auto& [name, value] : m_before)
            set(name, value);
    }

private:
    static void set(const std::string& name, const std::optional<std::string>& value) {
        if (value)
            setenv(name.c_str(), value->c_str(), 1);
        else
            unsetenv(name.c_str());
    }
    std::map<std::string, std::optional<std::string>> m_before;
};

constexpr std::int64_t largest = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t smallest = std::numeric_limits<std::int64_t>::min();

TEST(Format, WritesByteCountsInDecimalUnits) {
    const struct {
        std::int64_t bytes;
        const char* text;
    } cases[] = {
        {0, "Zero KB"},
        {1, "1 byte"},
        {2, "2 bytes"},
        {999, "999 bytes"},
        {1'000, "1 KB"},
        {1'499, "1 KB"},
        {1'500, "2 KB"}, // halves to even
        {2'500, "2 KB"},
        {2'501, "3 KB"},
        {3'500, "4 KB"},
        {999'499, "999 KB"},
        {999'500, "1 MB"}, // what rounds to a thousand moves up
        {999'999, "1 MB"},
        {1'000'000, "1 MB"},
        {1'050'000, "1 MB"},
        {1'050'001, "1.1 MB"},
        {1'150'000, "1.2 MB"},
        {1'250'000, "1.2 MB"},
        {12'345'678, "12.3 MB"},
        {999'949'999, "999.9 MB"},
        {999'950'000, "1 GB"},
        {1'005'000'000, "1 GB"},
        {1'015'000'000, "1.02 GB"},
        {1'234'567'890, "1.23 GB"},
        {1'200'000'000, "1.2 GB"},
        {999'994'999'999, "999.99 GB"},
        {999'995'000'000, "1 TB"},
        {1'500'000'000'000, "1.5 TB"},
        {999'995'000'000'000, "1 PB"},
        {4'000'000'000'000'000, "4 PB"},
        {999'995'000'000'000'000, "1 EB"},
        {largest, "9.22 EB"},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(formatByteCount(bytes, "en_US"), text) << bytes;
        EXPECT_EQ(formatByteCount(-bytes, "en_US"), (bytes == 0 ? "" : "-") + std::string(text)) << bytes;
    }
    EXPECT_EQ(formatByteCount(smallest, "en_US"), "-9.22 EB");
}

TEST(Format, WritesByteCountsInTheLanguageOfTheLocale) {
    // Some languages keep figure and unit on one line by U+00A0.
    const auto plain = [](std::string text) {
        for (const std::string_view space : {"\u00A0", "\u202F"}) {
            for (std::size_t at = text.find(space); at != std::string::npos; at = text.find(space))
                text.replace(at, space.size(), " ");
        }
        return text;
    };
    const struct {
        const char* locale;
        const char* zero;
        const char* one;
        const char* bytes; ///< 999
        const char* kilobytes;
        const char* gigabytes; ///< 1.23
        const char* exabytes;
    } cases[] = {
        {"en_GB", "Zero KB", "1 byte", "999 bytes", "12 KB", "1.23 GB", "9.22 EB"},
        {"fr_FR", "Zéro ko", "1 octet", "999 octets", "12 ko", "1,23 Go", "9,22 Eo"},
        {"de_DE", "Null kB", "1 Byte", "999 Byte", "12 kB", "1,23 GB", "9,22 EB"},
        {"es_ES", "Cero kB", "1 byte", "999 bytes", "12 kB", "1,23 GB", "9,22 EB"},
        {"it_IT", "Zero kB", "1 byte", "999 byte", "12 kB", "1,23 GB", "9,22 EB"},
        {"pt_BR", "Zero kB", "1 byte", "999 bytes", "12 kB", "1,23 GB", "9,22 EB"},
        {"ru_RU", "Ноль кБ", "1 байт", "999 байт", "12 кБ", "1,23 ГБ", "9,22 ЭБ"},
        {"sr_Latn_RS", "Nula kB", "1 bajt", "999 bajtova", "12 kB", "1,23 GB", "9,22 EB"},
        {"no such locale", "0 kB", "1 byte", "999 byte", "12 kB", "1.23 GB", "9.22 EB"},
        {"sr_Cyrl_RS", "Нула kB", "1 бајт", "999 бајтова", "12 kB", "1,23 GB", "9,22 EB"},
    };
    for (const auto& expected : cases) {
        const auto shown = [&](std::int64_t bytes) {
            return plain(formatByteCount(bytes, expected.locale));
        };
        EXPECT_EQ(shown(0), expected.zero) << expected.locale;
        EXPECT_EQ(shown(1), expected.one) << expected.locale;
        EXPECT_EQ(shown(999), expected.bytes) << expected.locale;
        EXPECT_EQ(shown(12'000), expected.kilobytes) << expected.locale;
        EXPECT_EQ(shown(1'230'000'000), expected.gigabytes) << expected.locale;
        EXPECT_EQ(shown(largest), expected.exabytes) << expected.locale;
    }
}

platform::Date at(double seconds) {
    return platform::Date(std::chrono::duration<double>(seconds));
}

TEST(Format, WritesDatesInTheMediumStyle) {
    const struct {
        const char* locale;
        double seconds;
        const char* text;
    } cases[] = {
        {"en_US", 1'700'000'000, "Nov 14, 2023"}, {"fr_FR", 1'700'000'000, "14 nov. 2023"},
        {"de_DE", 1'700'000'000, "14.11.2023"},   {"en_US", 0, "Jan 1, 1970"},
        {"en_US", -0.5, "Dec 31, 1969"},          {"en_US", 1'700'006'399.75, "Nov 14, 2023"},
    };
    for (const auto& [locale, seconds, text] : cases)
        EXPECT_EQ(platform::formatMediumDate(at(seconds), locale, platform::TimeZone::utc), text);
    // A file can bear any date; the point is that nothing crashes.
    for (const double seconds : {1e300, -1e300, std::numeric_limits<double>::quiet_NaN()})
        (void)platform::formatMediumDate(at(seconds), "en_US", platform::TimeZone::utc);
}

TEST(Format, FollowsTheUsersLocale) {
    const struct {
        Variables environment;
        const char* locale;
    } cases[] = {
        {{}, "en_US"},
        {{{"LANG", "C"}}, "en_US"},
        {{{"LANG", "fr_FR.UTF-8"}, {"LC_ALL", "POSIX"}}, "en_US"},
        {{{"LANG", "fr_FR.UTF-8"}, {"LC_ALL", "C.UTF-8"}}, "en_US"},
        {{{"LANG", "en_US.UTF-8"}, {"LC_TIME", "de_DE.UTF-8"}}, "de_DE"},
        {{{"LANG", "en_US.UTF-8"}, {"LC_TIME", ""}}, "en_US"},
        {{{"LC_ALL", "sr_RS.UTF-8@latin"}, {"LC_TIME", "de_DE.UTF-8"}}, "sr_Latn_RS"},
        {{{"LANG", "fr_FR.UTF-8"}, {"LANGUAGE", "de"}, {"LC_MESSAGES", "es_ES"}}, "fr_FR"},
    };
    for (const auto& [environment, locale] : cases) {
        const Environment set(environment);
        EXPECT_EQ(platform::userLocale(), locale);
    }
    const Environment french(Variables{{"LANG", "fr_FR.UTF-8"}});
    EXPECT_EQ(formatByteCount(12'000), formatByteCount(12'000, "fr_FR"));
    EXPECT_EQ(platform::formatMediumDate(at(1'700'000'000)).find("14 nov. 2023"), 0U);
}

TEST(Locale, ListsPreferredLanguages) {
    using Languages = std::vector<std::string>;
    const struct {
        Variables environment;
        Languages languages;
    } cases[] = {
        {{}, {}},
        {{{"LANG", "C"}}, {}},
        {{{"LANG", "C.UTF-8"}, {"LANGUAGE", "fr:en"}}, {}},
        {{{"LC_ALL", "POSIX"}, {"LANG", "fr_FR.UTF-8"}}, {}},
        {{{"LANGUAGE", "fr"}}, {}},
        {{{"LANG", "en_US.UTF-8"}}, {"en-US"}},
        {{{"LANG", "pt"}}, {"pt"}},
        {{{"LANG", "de_DE@euro"}}, {"de-DE"}},
        {{{"LANG", "en_US.UTF-8"}, {"LC_MESSAGES", "it_IT.UTF-8"}}, {"it-IT"}},
        {{{"LC_ALL", "ru_RU.UTF-8"}, {"LC_MESSAGES", "it_IT"}, {"LANG", "en_US"}}, {"ru-RU"}},
        {{{"LANG", "en_US.UTF-8"}, {"LANGUAGE", "fr_CH:sr_RS@latin::C:de"}}, {"fr-CH", "sr-Latn-RS", "de"}},
        {{{"LANG", "en_US.UTF-8"}, {"LANGUAGE", ":"}}, {"en-US"}},
        {{{"LANG", "sr_RS.UTF-8@cyrillic"}}, {"sr-Cyrl-RS"}},
        {{{"LANG", "../../x"}}, {}},
    };
    for (const auto& [environment, languages] : cases) {
        const Environment set(environment);
        EXPECT_EQ(platform::preferredLanguages(), languages);
    }
}

} // namespace
