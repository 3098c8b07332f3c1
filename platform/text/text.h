#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

/// Unicode text, UTF-8 throughout. Bytes that aren't UTF-8 stand for U+FFFD here; they never fail.
namespace platform {

/// `bytes` as text that can be shown: U+FFFD for what isn't UTF-8 (Unicode's "maximal subpart" practice).
std::string displayed(std::string_view bytes);

/// Lower case by the full Unicode mapping, the same in every locale.
std::string lowercased(std::string_view text);

/// Returns `text` with the first letter of each word in title case and the other letters in lower case, by
/// Unicode's full case mappings, independent of the locale. A word starts at a cased letter unless the last
/// character before it that isn't case-ignorable (Unicode property Case_Ignorable: apostrophes, accents, "^")
/// is a cased letter too: "My-App", "3Rd", "O'neil", "'Quoted'".
std::string capitalized(std::string_view text);

/// The length in user-perceived characters (extended grapheme clusters, UAX #29).
std::size_t characterCount(std::string_view text);

/// The order in which lists show names: the locale's, letter case ignored, accents kept, punctuation
/// counted, digits not as numbers. For one thread at a time.
class NameOrder {
public:
    /// `locale` as ICU names it ("en_US", "fr"); empty for the user's.
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
