// Stepping through the characters of multi-byte text: the two rules, each defined once on the C library, with
// fast forms in front for what every C library agrees on. No walk of this room asks the C library for a
// length elsewhere.
#ifndef KELCL_NLS_STEPPING_H
#define KELCL_NLS_STEPPING_H

#include <cstddef>
#include <cstdlib>
#include <cwchar>
#include <vector>

namespace kelcl {

/// Whether the current locale's encoding is UTF-8. Decided once for each operation, as the locale may change
/// between two.
bool isUtf8Locale();

/// Bytes that can never be part of a longer character: below 0x80 in UTF-8, and below 0x30 in every other
/// multi-byte encoding of the C library, whose trail bytes begin there.
inline bool standsAlone(char byte, bool isUtf8) {
    return static_cast<unsigned char>(byte) < (isUtf8 ? 0x80 : 0x30);
}

inline bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80; }

/// Bytes of the character at `p` if it is one of the UTF-8 sequences that every C library takes: of one to
/// four bytes, not overlong, no surrogate, up to U+10FFFF. 0 for anything else, which is for the C library to
/// say. Reads no byte behind one that cannot be part of the character, and none at or behind `available`.
inline std::size_t plainUtf8Length(char const* p, std::size_t available) {
    auto const at = [p](std::size_t i) { return static_cast<unsigned char>(p[i]); };
    unsigned char const lead = at(0);
    if (lead < 0x80) return 1;
    if (lead < 0xC2 || lead > 0xF4 || available < 2) return 0;
    unsigned char const second = at(1);
    if (lead < 0xE0) return isContinuation(p[1]) ? 2 : 0;
    unsigned char const lowest = lead == 0xE0 ? 0xA0 : lead == 0xF0 ? 0x90 : 0x80;
    unsigned char const highest = lead == 0xED ? 0x9F : lead == 0xF4 ? 0x8F : 0xBF;
    if (second < lowest || second > highest || available < 3 || !isContinuation(p[2])) return 0;
    if (lead < 0xF0) return 3;
    return available >= 4 && isContinuation(p[3]) ? 4 : 0;
}

/// The code point of a sequence that plainUtf8Length takes.
inline wchar_t plainUtf8Value(char const* p, std::size_t length) {
    auto const at = [p](std::size_t i) { return static_cast<wchar_t>(static_cast<unsigned char>(p[i])); };
    switch (length) {
    case 1:
        return at(0);
    case 2:
        return (at(0) & 0x1F) << 6 | (at(1) & 0x3F);
    case 3:
        return (at(0) & 0x0F) << 12 | (at(1) & 0x3F) << 6 | (at(2) & 0x3F);
    default:
        return (at(0) & 0x07) << 18 | (at(1) & 0x3F) << 12 | (at(2) & 0x3F) << 6 | (at(3) & 0x3F);
    }
}

/// The rule of the multi-byte buffer: a character has the length that the C library gives for at most six
/// bytes, and at least one: a NUL, an invalid byte and an incomplete sequence are one byte each. The state is
/// carried from character to character.
class BufferSteps {
public:
    static constexpr std::size_t longestCharacter = 6;

    BufferSteps() : isUtf8_(isUtf8Locale()) {}
    /// For a walk with the caller's state.
    BufferSteps(bool isUtf8, std::mbstate_t const& state) : isUtf8_(isUtf8), state_(state) {}

    bool isUtf8() const { return isUtf8_; }
    std::mbstate_t const& state() const { return state_; }

    /// Bytes of the character at `p`. Behind the text there is a NUL, which ends every sequence.
    unsigned int length(char const* p) { return lengthWithin(p, longestCharacter); }

    /// The same for a text of which only `available` bytes may be read.
    unsigned int lengthWithin(char const* p, std::size_t available) {
        if (static_cast<signed char>(*p) >= 0) return 1;
        if (isUtf8_)
            if (std::size_t const plain = plainUtf8Length(p, available))
                return static_cast<unsigned int>(plain);
        return askLibrary(p, available);
    }

private:
    unsigned int askLibrary(char const* p, std::size_t available);

    bool isUtf8_;
    std::mbstate_t state_{};
};

/// The rule of the national-language functions: characters as the C library finds them in MB_CUR_MAX bytes,
/// and what it calls invalid or incomplete told apart.
class UtilitySteps {
public:
    enum class Outcome { character, invalid, incomplete };
    struct Step {
        Outcome outcome;
        std::size_t bytes; ///< To advance by: the character's length, MB_CUR_MAX for an incomplete one.
    };

    UtilitySteps() : isUtf8_(isUtf8Locale()), mostBytes_(MB_CUR_MAX) {}

    bool isUtf8() const { return isUtf8_; }

    /// The step at `p`, looking at no more than MB_CUR_MAX and `available` bytes.
    Step at(char const* p, std::size_t available) {
        wchar_t ignored;
        return at(p, available, ignored);
    }
    /// The same, with the value of the character.
    Step at(char const* p, std::size_t available, wchar_t& value) {
        std::size_t const window = available < mostBytes_ ? available : mostBytes_;
        if (isUtf8_ && std::mbsinit(&state_) != 0 && window != 0)
            if (std::size_t const plain = plainUtf8Length(p, window)) {
                value = plainUtf8Value(p, plain);
                return {Outcome::character, plain};
            }
        return askLibrary(p, window, value);
    }

private:
    Step askLibrary(char const* p, std::size_t window, wchar_t& value);

    bool isUtf8_;
    std::size_t mostBytes_;
    std::mbstate_t state_{};
};

/// Whether the byte is an incomplete sequence by itself.
bool beginsLongerCharacter(char byte);

/// The first byte of the character that contains the byte at offset `at`, walking from the front by the
/// buffer's rule. Looks back only to a byte that cannot be part of a longer character.
std::size_t startOfCharacter(char const* text, std::size_t at, BufferSteps& steps);

/// Tells character starts to a search that asks for rising offsets, in one walk.
class RisingStarts {
public:
    /// `from` is the start of a character.
    RisingStarts(char const* text, std::size_t from, BufferSteps& steps)
        : text_(text), at_(from), steps_(steps) {}

    bool isStart(std::size_t offset) {
        if (steps_.isUtf8()) return startOfCharacter(text_, offset, steps_) == offset;
        while (at_ < offset)
            at_ += steps_.length(text_ + at_);
        return at_ == offset;
    }

private:
    char const* text_;
    std::size_t at_;
    BufferSteps& steps_;
};

/// Tells character starts to a search that asks for falling offsets. Where the encoding cannot be read
/// backwards it walks each stretch forwards once and remembers the starts in it.
class FallingStarts {
public:
    FallingStarts(char const* text, BufferSteps& steps) : text_(text), steps_(steps) {}

    /// The first byte of the character that contains the byte at `offset`.
    std::size_t startOf(std::size_t offset);

private:
    char const* text_;
    BufferSteps& steps_;
    std::vector<std::size_t> starts_; // rising; those of the stretch that was walked last
};

} // namespace kelcl

#endif
