#include "platform/text/format.h"

#include "platform/text/icu_locale.h"
#include "platform/text/locale.h"

#include <array>
#include <memory>
#include <string_view>

#include <unicode/datefmt.h>
#include <unicode/formattedvalue.h>
#include <unicode/measunit.h>
#include <unicode/numberformatter.h>
#include <unicode/rbnf.h>
#include <unicode/timezone.h>
#include <unicode/uchar.h>

namespace platform {

namespace {

/// A unit of byte counts and its resolution.
struct Unit {
    const char* identifier; ///< ICU's
    std::uint64_t bytesPerStep;
    std::uint64_t stepsPerUnit;
    int decimals;
};

constexpr std::array units{
    Unit{"byte", 1, 1, 0},
    Unit{"kilobyte", 1'000, 1, 0},
    Unit{"megabyte", 100'000, 10, 1},
    Unit{"gigabyte", 10'000'000, 100, 2},
    Unit{"terabyte", 10'000'000'000, 100, 2},
    Unit{"petabyte", 10'000'000'000'000, 100, 2},
    Unit{"exabyte", 10'000'000'000'000'000, 100, 2},
};
constexpr std::size_t bytesUnit = 0;
constexpr std::size_t kilobytesUnit = 1;
constexpr std::size_t exabytesUnit = units.size() - 1;

std::uint64_t dividedHalfToEven(std::uint64_t dividend, std::uint64_t divisor) {
    const std::uint64_t quotient = dividend / divisor;
    const std::uint64_t twiceRemainder = 2 * (dividend % divisor);
    const bool up = twiceRemainder > divisor || (twiceRemainder == divisor && quotient % 2 == 1);
    return quotient + (up ? 1 : 0);
}

std::string utf8(const icu::UnicodeString& text) {
    std::string result;
    text.toUTF8String(result);
    return result;
}

/// The formatters of one locale. Building them takes milliseconds, formatting a few microseconds.
class ByteCountFormat {
public:
    explicit ByteCountFormat(std::string localeName) : m_localeName(std::move(localeName)) {
        const icu::Locale locale = icuLocale(m_localeName);
        m_isEnglish = std::string_view(locale.getLanguage()) == "en";
        for (std::size_t i = 0; i < units.size(); ++i) {
            UErrorCode status = U_ZERO_ERROR;
            m_formatters[i] =
                icu::number::NumberFormatter::withLocale(locale)
                    .unit(icu::MeasureUnit::forIdentifier(units[i].identifier, status))
                    .unitWidth(i == bytesUnit ? UNUM_UNIT_WIDTH_FULL_NAME : UNUM_UNIT_WIDTH_SHORT)
                    .scale(icu::number::Scale::powerOfTen(-units[i].decimals))
                    .precision(icu::number::Precision::maxFraction(units[i].decimals));
        }
        m_zero = zero(locale);
    }

    const std::string& localeName() const { return m_localeName; }

    std::string operator()(std::int64_t bytes) const {
        if (bytes == 0)
            return m_zero;
        // The magnitude of the smallest value overflows a signed integer.
        const std::uint64_t magnitude =
            bytes < 0 ? 0 - static_cast<std::uint64_t>(bytes) : static_cast<std::uint64_t>(bytes);
        std::size_t unit = bytesUnit;
        std::uint64_t steps = dividedHalfToEven(magnitude, units[unit].bytesPerStep);
        while (steps >= 1'000 * units[unit].stepsPerUnit && unit != exabytesUnit) {
            ++unit;
            steps = dividedHalfToEven(magnitude, units[unit].bytesPerStep);
        }
        UErrorCode status = U_ZERO_ERROR;
        const auto shown = static_cast<std::int64_t>(steps);
        const auto formatted = m_formatters[unit].formatInt(bytes < 0 ? -shown : shown, status);
        return withCustomaryUnit(utf8(formatted.toString(status)), unit);
    }

private:
    /// Returns "Zero KB": the locale's word for zero, capitalized, or the digit where it has none.
    std::string zero(const icu::Locale& locale) const {
        UErrorCode status = U_ZERO_ERROR;
        const auto formatted = m_formatters[kilobytesUnit].formatInt(0, status);
        icu::UnicodeString text = formatted.toString(status);
        icu::ConstrainedFieldPosition figure;
        figure.constrainField(UFIELD_CATEGORY_NUMBER, UNUM_INTEGER_FIELD);
        icu::UnicodeString word;
        const icu::RuleBasedNumberFormat spelled(icu::URBNF_SPELLOUT, locale, status);
        if (U_SUCCESS(status) && formatted.nextPosition(figure, status))
            spelled.format(0, word);
        if (U_SUCCESS(status) && u_isalpha(word.char32At(0)))
            text.replaceBetween(figure.getStart(), figure.getLimit(), word.toTitle(nullptr, locale));
        return withCustomaryUnit(utf8(text), kilobytesUnit);
    }

    std::string withCustomaryUnit(std::string text, std::size_t unit) const {
        // The Mac writes "KB" in English, where ICU writes "kB".
        if (const std::size_t k = text.find("kB"); m_isEnglish && k != std::string::npos)
            text[k] = 'K';
        // In languages without a short name of the exabyte, ICU composes one: "Ebyte".
        if (unit == exabytesUnit) {
            for (const std::string_view composed : {"Ebytes", "Ebyte", "EByte"}) {
                if (const std::size_t at = text.find(composed); at != std::string::npos)
                    text.replace(at, composed.size(), "EB");
            }
        }
        return text;
    }

    std::string m_localeName;
    bool m_isEnglish = false;
    std::array<icu::number::LocalizedNumberFormatter, units.size()> m_formatters;
    std::string m_zero;
};

struct MediumDateFormat {
    std::string localeName;
    TimeZone zone;
    std::unique_ptr<icu::DateFormat> format;
};

} // namespace

std::string formatByteCount(std::int64_t bytes, const std::string& locale) {
    thread_local std::unique_ptr<const ByteCountFormat> latest;
    const std::string name = locale.empty() ? userLocale(LocaleCategory::numeric) : locale;
    if (!latest || latest->localeName() != name)
        latest = std::make_unique<const ByteCountFormat>(name);
    return (*latest)(bytes);
}

std::string formatCount(std::int64_t count, const std::string& locale) {
    struct Latest {
        std::string localeName;
        icu::number::LocalizedNumberFormatter format;
    };
    thread_local std::unique_ptr<const Latest> latest;
    const std::string name = locale.empty() ? userLocale(LocaleCategory::numeric) : locale;
    if (!latest || latest->localeName != name)
        latest = std::make_unique<const Latest>(
            Latest{name, icu::number::NumberFormatter::withLocale(icuLocale(name))});
    UErrorCode status = U_ZERO_ERROR;
    return utf8(latest->format.formatInt(count, status).toString(status));
}

std::string formatMediumDate(Date date, const std::string& locale, TimeZone zone) {
    thread_local MediumDateFormat latest;
    const std::string name = locale.empty() ? userLocale(LocaleCategory::time) : locale;
    if (!latest.format || latest.localeName != name || latest.zone != zone) {
        latest = {name, zone,
                  std::unique_ptr<icu::DateFormat>(
                      icu::DateFormat::createDateInstance(icu::DateFormat::kMedium, icuLocale(name)))};
        if (latest.format && zone == TimeZone::utc)
            latest.format->setTimeZone(*icu::TimeZone::getGMT());
    }
    icu::UnicodeString text;
    if (latest.format)
        latest.format->format(secondsSince1970(date) * 1'000, text);
    return utf8(text);
}

} // namespace platform
