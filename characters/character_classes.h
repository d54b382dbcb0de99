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

/// The offset of the first (last) byte that is not a member, or notFound.
std::size_t findFirstNotIn(std::string_view text, CharacterClass const& characterClass);
std::size_t findLastNotIn(std::string_view text, CharacterClass const& characterClass);

} // namespace kelcl

#endif
