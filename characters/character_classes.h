// The eleven character classes: which bytes are members in the current locale, and which function of the C
// library says it of wide characters.
#ifndef KELCL_CHARACTERS_CHARACTER_CLASSES_H
#define KELCL_CHARACTERS_CHARACTER_CLASSES_H

#include "bytes/byte_set.h"
#include "characters/locale_encoding.h"

#include <cstddef>
#include <cwchar>
#include <string_view>

namespace kelcl {

struct CharacterClass {
    /// The class as a function for a DStringTest: 1 or 0 for a byte sign-extended to int; wide values beyond
    /// 127 are answered by the locale's wide classes.
    int (*test)(int);
    /// Members among 0 to 127, which are those of the C locale in every locale.
    ByteSet ascii;
    /// The C library's class of wide characters; null when nothing beyond 127 is a member.
    int (*ofWide)(std::wint_t);
    /// Whether all of those in ASCII can never be part of longer characters, whatever the encoding.
    bool standsAloneAnywhere = allStandAlone(ascii);

    /// Whether all of those in ASCII have the same values in every encoding, where they are characters of
    /// their own: letters and digits have, some punctuation has not.
    bool isAlphanumericInAscii = allAreAlphanumeric(ascii);

    static constexpr bool allAreAlphanumeric(ByteSet const& members) {
        for (int c = 0; c < 128; ++c) {
            bool const isLetter = (c | 0x20) >= 'a' && (c | 0x20) <= 'z';
            if (members.contains(static_cast<char>(c)) && !isLetter && !(c >= '0' && c <= '9')) return false;
        }
        return true;
    }
    static constexpr bool allStandAlone(ByteSet const& members) {
        for (int c = 0; c < 128; ++c)
            if (members.contains(static_cast<char>(c)) && !kelcl::standsAloneAnywhere(static_cast<char>(c)))
                return false;
        return true;
    }
};

extern CharacterClass const alphanumeric, alphabetic, control, digits, graphics, hexDigits, lowerCase,
    printable, punctuation, upperCase, whiteSpace;

/// The class whose `test` is the given function, or null.
CharacterClass const* classOf(int (*function)(int));

/// The same as findFirstNotIn (findLastNotIn) from an offset on (back from it) where a byte stands that is
/// not in ASCII: the locale is asked about it.
std::size_t goOnToFirstNotIn(std::string_view text, CharacterClass const& characterClass, std::size_t at);
std::size_t goOnToLastNotIn(std::string_view text, CharacterClass const& characterClass, std::size_t at);

/// Whether the locale has to be asked about what stopped a search for bytes outside of the members in ASCII.
inline bool asksLocale(std::string_view text, CharacterClass const& characterClass, std::size_t at) {
    return at != notFound && characterClass.ofWide != nullptr && static_cast<signed char>(text[at]) < 0;
}

/// The offset of the first (last) byte that is not a member, or notFound.
inline std::size_t findFirstNotIn(std::string_view text, CharacterClass const& characterClass) {
    std::size_t const at = findFirstNotIn(text, characterClass.ascii);
    return asksLocale(text, characterClass, at) ? goOnToFirstNotIn(text, characterClass, at) : at;
}
inline std::size_t findLastNotIn(std::string_view text, CharacterClass const& characterClass) {
    std::size_t const at = findLastNotIn(text, characterClass.ascii);
    return asksLocale(text, characterClass, at) ? goOnToLastNotIn(text, characterClass, at) : at;
}

} // namespace kelcl

#endif
