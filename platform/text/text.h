#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// Operations on Unicode text in UTF-8. Bytes that aren't valid UTF-8 count as U+FFFD; no function fails.
namespace platform {

/// Returns `bytes` with every maximal subpart of an ill-formed sequence replaced by U+FFFD (Unicode, section
/// 3.9).
std::string displayed(std::string_view bytes);

/// Returns `text` in lower case by Unicode's full case mappings, independent of the locale.
std::string lowercased(std::string_view text);

/// Returns `text` with the first letter of each word in title case and the other letters in lower case, by
/// Unicode's full case mappings, independent of the locale. A word starts at a cased letter unless the last
/// character before it that isn't case-ignorable (Unicode property Case_Ignorable: apostrophes, accents, "^")
/// is a cased letter too: "My-App", "3Rd", "O'neil", "'Quoted'".
std::string capitalized(std::string_view text);

/// Returns the number of user-perceived characters (extended grapheme clusters, UAX #29).
std::size_t characterCount(std::string_view text);

/// The order of names in lists: the locale's collation, ignoring letter case, with accents and punctuation
/// significant and digits not compared as numbers. Not thread-safe.
class NameOrder {
public:
    /// `locale` is an ICU locale name ("en_US", "fr"); empty for the user's locale.
    explicit NameOrder(const std::string& locale = {});
    NameOrder(NameOrder&&) noexcept;
    NameOrder& operator=(NameOrder&&) noexcept;
    ~NameOrder();

    bool before(std::string_view a, std::string_view b) const;

private:
    struct Collator;
    std::unique_ptr<Collator> m_collator;
};

} // namespace platform
