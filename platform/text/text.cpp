#include "platform/text/text.h"

#include "platform/text/icu_locale.h"
#include "platform/text/locale.h"

#include <algorithm>

#include <unicode/brkiter.h>
#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/coll.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utext.h>

namespace platform {

namespace {

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isPrintableAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

icu::StringPiece piece(std::string_view text) {
    return {text.data(), static_cast<std::int32_t>(text.size())};
}

} // namespace

std::string displayed(std::string_view bytes) {
    if (isAscii(bytes))
        return std::string(bytes);
    // ICU's decoder inserts the replacement characters.
    std::string text;
    icu::UnicodeString::fromUTF8(piece(bytes)).toUTF8String(text);
    return text;
}

std::string lowercased(std::string_view text) {
    std::string lower;
    if (isPrintableAscii(text)) {
        lower.assign(text);
        for (char& c : lower)
            c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        return lower;
    }
    const std::string valid = displayed(text);
    icu::StringByteSink<std::string> sink(&lower, static_cast<std::int32_t>(valid.size()));
    UErrorCode status = U_ZERO_ERROR;
    icu::CaseMap::utf8ToLower("", 0, piece(valid), sink, nullptr, status);
    return U_SUCCESS(status) ? lower : valid;
}

std::string capitalized(std::string_view text) {
    const icu::UnicodeString source = icu::UnicodeString::fromUTF8(piece(text));
    icu::UnicodeString capital;
    std::int32_t wordStart = 0;
    bool isInWord = false;
    const auto appendWord = [&](std::int32_t end) {
        icu::UnicodeString word(source, wordStart, end - wordStart);
        capital += word.toTitle(nullptr, icu::Locale::getRoot(),
                                U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_BREAK_ADJUSTMENT);
        wordStart = end;
    };
    for (std::int32_t at = 0; at < source.length(); at = source.moveIndex32(at, 1)) {
        const UChar32 c = source.char32At(at);
        if (u_hasBinaryProperty(c, UCHAR_CASE_IGNORABLE))
            continue;
        const bool isCased = u_hasBinaryProperty(c, UCHAR_CASED) != 0;
        if (isCased && !isInWord)
            appendWord(at);
        isInWord = isCased;
    }
    appendWord(source.length());
    std::string result;
    capital.toUTF8String(result);
    return result;
}

std::size_t characterCount(std::string_view text) {
    if (isPrintableAscii(text))
        return text.size();
    // Cached: creating an iterator takes a thousand times as long as counting one name.
    thread_local const std::unique_ptr<icu::BreakIterator> characters = [] {
        UErrorCode status = U_ZERO_ERROR;
        return std::unique_ptr<icu::BreakIterator>(
            icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    }();
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<UText, decltype(&utext_close)> source(
        utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status), utext_close);
    if (!characters || U_FAILURE(status))
        return text.size();
    characters->setText(source.get(), status);
    std::size_t count = 0;
    for (characters->first(); characters->next() != icu::BreakIterator::DONE;)
        ++count;
    return count;
}

struct NameOrder::Collator {
    std::unique_ptr<icu::Collator> rules;
};

NameOrder::NameOrder(const std::string& locale) : m_collator(std::make_unique<Collator>()) {
    UErrorCode status = U_ZERO_ERROR;
    const std::string name = locale.empty() ? userLocale(LocaleCategory::collate) : locale;
    m_collator->rules.reset(icu::Collator::createInstance(icuLocale(name), status));
    if (!m_collator->rules)
        return;
    m_collator->rules->setStrength(icu::Collator::SECONDARY);
    // Some locales ignore punctuation by default.
    m_collator->rules->setAttribute(UCOL_ALTERNATE_HANDLING, UCOL_NON_IGNORABLE, status);
    m_collator->rules->setAttribute(UCOL_NUMERIC_COLLATION, UCOL_OFF, status);
}

NameOrder::NameOrder(NameOrder&&) noexcept = default;
NameOrder& NameOrder::operator=(NameOrder&&) noexcept = default;
NameOrder::~NameOrder() = default;

bool NameOrder::before(std::string_view a, std::string_view b) const {
    if (!m_collator->rules)
        return a < b;
    UErrorCode status = U_ZERO_ERROR;
    return m_collator->rules->compareUTF8(piece(a), piece(b), status) == UCOL_LESS;
}

} // namespace platform
