// One character converted by the C library, by itself.
#include "characters/one_character.h"

#include <algorithm>

namespace kelcl {

namespace {

/// What the library holds back comes out in front of a NUL; 0 if that is nothing.
wchar_t heldBack(std::mbstate_t& state) {
    wchar_t value = 0;
    return std::mbrtowc(&value, "", 1, &state) == 0 ? value : L'\0';
}

} // namespace

CharacterRead readCharacter(char const* p, std::size_t n, std::mbstate_t& state) {
    CharacterRead read{0, 0, 0};
    read.length = std::mbrtowc(&read.value, p, n, &state);
    if (!read.isCharacter()) return {read.length, 0, 0};
    bool const isNul = read.length == 0 && read.value == 0;
    bool const isOfNoBytes = read.length == 0 && !isNul; // the caller's state held it back
    if (std::mbsinit(&state) == 0) {
        if (read.value == 0) read.value = heldBack(state);
        if (std::mbsinit(&state) == 0 && !isOfNoBytes) read.second = heldBack(state);
        state = {}; // in some encodings the library would give the second one again and again
    }
    if (isNul) read.length = 1;
    return read;
}

std::size_t writeCharacter(wchar_t value, char (&bytes)[MB_LEN_MAX]) {
    std::mbstate_t state{};
    std::size_t const length = std::wcrtomb(bytes, value, &state);
    if (length == invalidSequence || std::mbsinit(&state) != 0) return length;
    char rest[MB_LEN_MAX];
    std::size_t const withNul = std::wcrtomb(rest, L'\0', &state);
    if (withNul == invalidSequence || length + withNul - 1 > sizeof bytes) return invalidSequence;
    std::copy_n(rest, withNul - 1, bytes + length);
    return length + withNul - 1;
}

} // namespace kelcl
