// Stepping through the characters of multi-byte text: the two rules, each defined once on the C library, with
// fast forms in front for what every C library agrees on. No walk of this room asks the C library for a
// length elsewhere.
#ifndef KELCL_CHARACTERS_STEPPING_H
#define KELCL_CHARACTERS_STEPPING_H

#include "bytes/byte_search.h"
#include "characters/encoding_table.h"
#include "characters/locale_encoding.h"
#include "characters/one_character.h"
#include "characters/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cwchar>
#include <memory>
#include <string_view>

namespace kelcl {

/// How the encoding of the current locale is stepped through: directly where it is UTF-8, else by a table
/// where there is one, else by asking the C library. Decided once for each operation, as the locale may
/// change between two.
struct Encoding {
    bool isUtf8;
    EncodingTable const* table;

    static Encoding current();
    /// The same for what looks at characters however long they are, and so need not ask for MB_CUR_MAX.
    static Encoding ofWholeCharacters() {
        char const* const codeset = nl_langinfo(CODESET);
        return kelcl::isUtf8(codeset) ? Encoding{true, nullptr} : other(codeset);
    }
    /// Whether most characters are told without asking the library, and each byte below 0x80 that begins a
    /// character is all of it.
    bool isKnown() const { return isUtf8 || table != nullptr; }

private:
    static Encoding other(char const* codeset);
};

/// The rule of the multi-byte buffer: a character has the length that the C library gives for at most six
/// bytes, and at least one: a NUL, an invalid byte and an incomplete sequence are one byte each. Each is
/// measured with a fresh state.
class BufferSteps {
public:
    static constexpr std::size_t longestCharacter = 6;

    BufferSteps() : encoding_(Encoding::ofWholeCharacters()) {}
    /// For a text of an encoding that is known already.
    explicit BufferSteps(Encoding const& encoding) : encoding_(encoding) {}
    /// For one character with the caller's state, which may be inside it: the C library alone is asked.
    explicit BufferSteps(std::mbstate_t const& state) : encoding_{false, nullptr}, state_(state) {}

    bool isUtf8() const { return encoding_.isUtf8; }
    Encoding const& encoding() const { return encoding_; }

    /// Whether a byte (each of some bytes) can never be part of a longer character.
    bool standsAlone(char byte) const {
        if (encoding_.table == nullptr) return kelcl::standsAlone(byte, encoding_.isUtf8);
        return static_cast<unsigned char>(byte) < encoding_.table->trailFloor();
    }
    bool standAlone(std::string_view bytes) const {
        unsigned char highest = 0;
        for (char const byte : bytes)
            highest = std::max(highest, static_cast<unsigned char>(byte));
        return standsAlone(static_cast<char>(highest));
    }
    /// Whether a byte can never be followed by another one of its character, so that a character begins
    /// after it. Not for UTF-8.
    bool endsCharacter(char byte) const {
        if (encoding_.table == nullptr) return kelcl::standsAlone(byte, false);
        return !encoding_.table->mayContinue(byte);
    }
    /// Whether a character begins between two bytes wherever they stand next to each other. Not for UTF-8.
    bool isBoundary(char before, char after) const {
        if (endsCharacter(before)) return true;
        auto const isAscii = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
        return isAscii(before) && isAscii(after) && encoding_.table != nullptr &&
               !encoding_.table->hasAsciiNeighbours();
    }

    /// Bytes of the character at `p`. The terminating NUL ends every sequence.
    unsigned int length(char const* p) { return lengthWithin(p, longestCharacter); }

    /// The same for a text of which only `available` bytes may be read.
    unsigned int lengthWithin(char const* p, std::size_t available) {
        if (encoding_.isUtf8) {
            if (std::size_t const plain = plainUtf8Length(p, available))
                return static_cast<unsigned int>(plain);
        } else if (encoding_.table != nullptr) {
            if (unsigned int const known = encoding_.table->lengthOf(p, available)) return known;
        }
        return askLibrary(p, available);
    }

private:
    unsigned int askLibrary(char const* p, std::size_t available);

    Encoding encoding_;
    std::mbstate_t state_{};
};

/// The rule of the national-language functions: characters as the C library finds them in MB_CUR_MAX bytes,
/// and what it calls invalid or incomplete told apart. Each begins with a fresh state, as those that end an
/// incomplete sequence leave one.
class UtilitySteps {
public:
    /// Two characters: a sequence that gives two wide characters. It is one where bytes are walked, but none
    /// to convert: wide text would not tell it from the two characters' own sequences.
    enum class Outcome { character, twoCharacters, invalid, incomplete };
    struct Step {
        Outcome outcome;
        std::size_t bytes; ///< To advance by: the character's length, MB_CUR_MAX for an incomplete one.
        wchar_t second;    ///< Of two characters the value of the second one, else 0.
    };

    UtilitySteps() : encoding_(Encoding::current()), maxBytes_(encoding_.isUtf8 ? plainBytes : MB_CUR_MAX) {}
    /// Begins with the caller's state, which may be inside a character.
    explicit UtilitySteps(std::mbstate_t const& state) : UtilitySteps() {
        state_ = state;
        isInside_ = std::mbsinit(&state) == 0;
    }

    Encoding const& encoding() const { return encoding_; }
    std::mbstate_t const& state() const { return state_; }

    /// The step at `p`, looking at no more than MB_CUR_MAX and `available` bytes.
    Step at(char const* p, std::size_t available) {
        wchar_t ignored;
        return at(p, available, ignored);
    }
    /// The same, with the value of the character, or the first of two.
    Step at(char const* p, std::size_t available, wchar_t& value) {
        std::size_t const window = available < maxBytes_ ? available : maxBytes_;
        if (!isInside_ && window != 0) {
            std::size_t known = 0;
            if (encoding_.isUtf8) {
                known = plainUtf8Length(p, window);
                if (known != 0) value = plainUtf8Value(p, known);
            } else if (encoding_.table != nullptr) {
                known = encoding_.table->decode(p, window, value);
            }
            if (known != 0) return {Outcome::character, known, 0};
        }
        return askLibrary(p, available, value);
    }

    /// Begins anew, as if nothing had been read.
    void restart() {
        state_ = {};
        isInside_ = false;
    }

private:
    Step askLibrary(char const* p, std::size_t available, wchar_t& value);

    static constexpr std::size_t plainBytes = 4;

    Encoding encoding_;
    std::size_t maxBytes_; ///< For what is known without the C library: MB_CUR_MAX, or as many as matter.
    std::mbstate_t state_{};
    bool isInside_ = false; ///< Whether the last step ended inside a character, which the next one continues.
};

/// Whether the byte is an incomplete sequence by itself.
bool beginsLongerCharacter(char byte);

/// Whether a character begins at an offset whatever encoding the text has: at its front, with or after a byte
/// that stands alone in every encoding, and with ASCII after ASCII, of which no character has two bytes in a
/// row. If not, the encoding has to be asked for.
inline bool surelyBeginsCharacter(char const* text, std::size_t at) {
    if (at == 0 || standsAloneAnywhere(text[at])) return true;
    char const before = text[at - 1];
    return standsAloneAnywhere(before) || (static_cast<signed char>(before | text[at]) >= 0);
}

/// The same as startOfCharacter for UTF-8, which can be read backwards.
inline std::size_t startOfUtf8Character(char const* text, std::size_t at, BufferSteps& steps) {
    if (!isContinuation(text[at])) return at;
    for (std::size_t back = 1; back < BufferSteps::longestCharacter && back <= at; ++back) {
        std::size_t const lead = at - back;
        if (isContinuation(text[lead])) continue;
        return steps.length(text + lead) > back ? lead : at;
    }
    return at;
}

/// The first byte of the character that contains the byte at offset `at`, as a walk from the front by the
/// buffer's rule finds it. Looks back only as far as the bytes leave open what is a character.
std::size_t startOfCharacter(char const* text, std::size_t at, BufferSteps& steps);

/// A character start at or before `at`, and not before the character start `lowest`. Not for UTF-8.
std::size_t boundaryBefore(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps);

/// Tells character starts to a search that asks for rising offsets, in one walk.
class RisingStarts {
public:
    /// `from` is the start of a character.
    RisingStarts(char const* text, std::size_t from, BufferSteps& steps)
        : text_(text), at_(from), steps_(steps) {}

    bool isStart(std::size_t offset) {
        if (steps_.isUtf8()) return startOfUtf8Character(text_, offset, steps_) == offset;
        return startByWalk(offset) == offset;
    }

    /// The first start at or after `offset`.
    std::size_t startFrom(std::size_t offset) {
        if (!steps_.isUtf8()) return startByWalk(offset);
        std::size_t const start = startOfUtf8Character(text_, offset, steps_);
        return start == offset ? offset : start + steps_.length(text_ + start);
    }

private:
    std::size_t startByWalk(std::size_t offset) {
        if (at_ < offset) at_ = boundaryBefore(text_, offset, at_, steps_);
        while (at_ < offset)
            at_ += steps_.length(text_ + at_);
        return at_;
    }

    char const* text_;
    std::size_t at_;
    BufferSteps& steps_;
};

/// The first place from `candidate` on at which something begins together with a character. `find(offset)`
/// gives the first place at or after an offset where something begins, or notFound; `candidate` is what it
/// gave first.
template <class Find>
std::size_t firstAtStart(RisingStarts& starts, std::size_t candidate, Find const& find) {
    while (candidate != notFound) {
        std::size_t const start = starts.startFrom(candidate);
        if (start == candidate) break;
        candidate = find(start);
    }
    return candidate;
}

/// Tells character starts to a search that asks for falling offsets. Where the encoding cannot be read
/// backwards it walks each stretch forwards once and remembers the starts in it, one bit for each byte.
class FallingStarts {
public:
    FallingStarts(char const* text, BufferSteps& steps) : text_(text), steps_(steps) {}
    FallingStarts(FallingStarts const&) = delete;
    FallingStarts& operator=(FallingStarts const&) = delete;

    /// The first byte of the character that contains the byte at `offset`.
    std::size_t startOf(std::size_t offset) {
        if (steps_.isUtf8()) return startOfUtf8Character(text_, offset, steps_);
        if (offset < stretch_) walkTo(offset);
        return startInStretch(offset);
    }

private:
    void walkTo(std::size_t offset);
    std::size_t startInStretch(std::size_t offset) const;

    static constexpr std::size_t bitsInWord = 64;
    static constexpr std::size_t wordsWithoutAllocation = 64;

    char const* text_;
    BufferSteps& steps_;
    std::size_t stretch_ = notFound; ///< Where the stretch that was walked last begins.
    std::array<std::uint64_t, wordsWithoutAllocation> room_;
    std::unique_ptr<std::uint64_t[]> moreRoom_;
    std::uint64_t* starts_ = nullptr;
};

/// The last place up to `candidate` at which something begins together with a character. `find(offset)` gives
/// the last place at or before an offset where something begins, or notFound; `candidate` is what it gave
/// first.
template <class Find>
std::size_t lastAtStart(FallingStarts& starts, std::size_t candidate, Find const& find) {
    while (candidate != notFound) {
        std::size_t const start = starts.startOf(candidate);
        if (start == candidate) break;
        candidate = find(start);
    }
    return candidate;
}

} // namespace kelcl

#endif
