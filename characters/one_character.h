// One character converted by the C library, by itself. In some encodings the library keeps a state between
// characters: a sequence gives two wide characters, or one is held back as long as another may combine with
// it. Here each character begins and ends in the initial state, so that text converts back to its own bytes.
#ifndef KELCL_CHARACTERS_ONE_CHARACTER_H
#define KELCL_CHARACTERS_ONE_CHARACTER_H

#include <climits>
#include <cstddef>
#include <cwchar>

namespace kelcl {

/// The C library's answers for bytes that are no character.
inline constexpr std::size_t invalidSequence = static_cast<std::size_t>(-1);
inline constexpr std::size_t incompleteSequence = static_cast<std::size_t>(-2);

struct CharacterRead {
    std::size_t
        length;     ///< In bytes, 1 for a NUL, 0 for what the state held back; or one of the answers above.
    wchar_t value;  ///< 0 where there is no character.
    wchar_t second; ///< The next wide character that the same bytes give; 0 for all but a few sequences.

    bool isCharacter() const { return length != invalidSequence && length != incompleteSequence; }
};

/// Reads the character at the front of `n` bytes. The state is as mbrtowc leaves it after bytes that are
/// no character, else the initial one.
CharacterRead readCharacter(char const* p, std::size_t n, std::mbstate_t& state);

/// Writes the bytes of a character and returns how many they are, invalidSequence where it has none.
std::size_t writeCharacter(wchar_t value, char (&bytes)[MB_LEN_MAX]);

} // namespace kelcl

#endif
