// DDBCSBuffer: character classes, kinds of characters, and the classes of wide values.
#include "buffers/host_classes.h"
#include "bytes/byte_search.h"
#include "characters/answer_cache.h"
#include "characters/character_classes.h"
#include "characters/conversion.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <string_view>

namespace {

/// Whether a wide value is in a class: 1 or 0.
int isInClass(int c, kelcl::CharacterClass const& members) {
    if (c >= 0 && c <= 127) return members.ascii.contains(static_cast<char>(c)) ? 1 : 0;
    return members.ofWide != nullptr && members.ofWide(static_cast<std::wint_t>(c)) != 0 ? 1 : 0;
}

} // namespace

int tql_iswalnum(int c) { return isInClass(c, kelcl::alphanumeric); }
int tql_iswalpha(int c) { return isInClass(c, kelcl::alphabetic); }
int tql_iswcntrl(int c) { return isInClass(c, kelcl::control); }
int tql_iswdigit(int c) { return isInClass(c, kelcl::digits); }
int tql_iswgraph(int c) { return isInClass(c, kelcl::graphics); }
int tql_iswlower(int c) { return isInClass(c, kelcl::lowerCase); }
int tql_iswprint(int c) { return isInClass(c, kelcl::printable); }
int tql_iswpunct(int c) { return isInClass(c, kelcl::punctuation); }
int tql_iswspace(int c) { return isInClass(c, kelcl::whiteSpace); }
int tql_iswupper(int c) { return isInClass(c, kelcl::upperCase); }
int tql_iswxdigit(int c) { return isInClass(c, kelcl::hexDigits); }

namespace {

struct WideCharacter {
    int value;          ///< The wide value, the first of two; of a byte that does not convert its value as a
                        ///< signed char.
    unsigned int bytes; ///< How far the next character is.
};

/// Walks the characters of a text, telling their wide values.
class WideWalk {
public:
    explicit WideWalk(DBuffer const& text) : end_(text.contents() + text.length) {}

    kelcl::Encoding const& encoding() const { return values_.encoding(); }

    WideCharacter at(char const* p) {
        wchar_t value = 0;
        auto const rest = static_cast<std::size_t>(end_ - p);
        auto const step = values_.at(p, rest + 1, value); // the terminating NUL may be looked at
        using Outcome = kelcl::UtilitySteps::Outcome;
        if (step.outcome == Outcome::character || step.outcome == Outcome::twoCharacters)
            return {static_cast<int>(value), static_cast<unsigned int>(step.bytes)};
        values_.restart();
        return {static_cast<signed char>(*p), kelcl::BufferSteps(values_.encoding()).length(p)};
    }

private:
    char const* end_;
    kelcl::UtilitySteps values_;
};

/// The offset of the first character from `from` on that `accepts`, given its wide value, does not accept.
template <class Accepts>
std::size_t firstRejected(DBuffer const& text, std::size_t from, Accepts accepts) {
    WideWalk walk(text);
    for (std::size_t at = from; at < text.length;) {
        WideCharacter const character = walk.at(text.contents() + at);
        if (!accepts(character.value)) return at;
        at += character.bytes;
    }
    return kelcl::notFound;
}

/// Skips members of a class among the bytes that stand for the wide characters of the same value: one by one
/// where there are few, by the byte kernels where they go on.
std::size_t skipMembers(std::string_view text, std::size_t at, kelcl::ByteSet const& members,
                        kelcl::ByteSet const& ownValues) {
    constexpr std::size_t few = 16;
    std::size_t const stop = std::min(text.size(), at + few);
    while (at < stop && ownValues.contains(text[at]) && members.contains(text[at]))
        ++at;
    if (at < stop || at >= text.size()) return at;
    std::string_view const rest = text.substr(at);
    std::string_view const skipped = rest.substr(0, kelcl::findFirstNotIn(rest, members));
    return at + std::min(kelcl::findFirstNotIn(skipped, ownValues), skipped.size());
}

/// Whether `isMember` is true of all characters from `at` on.
template <class IsMember>
bool areMembers(std::string_view text, std::size_t at, kelcl::ByteSet const& ascii, WideWalk& walk,
                IsMember isMember) {
    kelcl::ByteSet const& ownValues = kelcl::identityBytes(walk.encoding());
    while (at < text.size()) {
        wchar_t values[1024];
        std::size_t const most = std::min(text.size() - at, std::size(values));
        kelcl::Extent const known = kelcl::widenKnown(values, text.data() + at, most, walk.encoding());
        for (std::size_t i = 0; i < known.characters; ++i)
            if (!isMember(values[i])) return false;
        at += known.bytes;
        if (known.bytes == 0) {
            WideCharacter const character = walk.at(text.data() + at);
            if (!isMember(character.value)) return false;
            at += character.bytes;
        }
        at = skipMembers(text, at, ascii, ownValues);
    }
    return true;
}

/// Whether all characters from `at` on are of a class. A function of its own, as it needs room.
[[gnu::noinline]] bool restConsistsOf(kelcl::CharacterClass const& members, DBuffer const& buffer,
                                      std::size_t at) {
    std::string_view const text(buffer.contents(), buffer.length);
    WideWalk walk(buffer);
    at = skipMembers(text, at, members.ascii, kelcl::identityBytes(walk.encoding()));
    if (at == text.size()) return true;
    auto const ask = [&members](int value) { return isInClass(value, members) != 0; };
    auto const yes = [](int) { return true; };
    return kelcl::withAnswers<bool>(text.size() - at, ask, yes, [&](auto isMember) {
        return areMembers(text, at, members.ascii, walk, isMember);
    });
}

/// Whether all characters are of a class, from where a search begins: a class that a host derived may say
/// that this is not the front.
bool charactersConsistOf(kelcl::CharacterClass const& members, DBuffer const& buffer) {
    if (buffer.length == 0) return false;
    unsigned int const first = kelcl::isLibraryClass(buffer) ? 1 : buffer.startSearch(1, 1);
    if (first == 0 || first > buffer.length) return true;
    // Where there is nothing but letters and digits of ASCII, each byte is a character in every encoding, and
    // stands for itself; in UTF-8 all of ASCII does, whatever is beside it.
    bool const isKnownAnywhere = members.isAlphanumericInAscii;
    if (!isKnownAnywhere && !kelcl::isUtf8Codeset()) return restConsistsOf(members, buffer, first - 1);
    std::string_view const rest(buffer.contents() + first - 1, buffer.length - first + 1);
    std::size_t const skipped = kelcl::findFirstNotIn(rest, members.ascii);
    if (skipped == kelcl::notFound) return true;
    if (isKnownAnywhere && !kelcl::isUtf8Codeset()) return restConsistsOf(members, buffer, first - 1);
    return static_cast<signed char>(rest[skipped]) < 0 &&
           restConsistsOf(members, buffer, first - 1 + skipped);
}

bool isDoubleWidth(WideCharacter const& character) {
    return character.bytes >= 2 && wcwidth(static_cast<wchar_t>(character.value)) >= 2;
}

/// Whether all characters of UTF-8 are of double width (none is). There it is the values from 0x80 on that
/// have several bytes.
bool haveDoubleWidth(DBuffer const& buffer, WideWalk& walk, bool expected) {
    constexpr kelcl::ByteSet noBytes;
    std::string_view const text(buffer.contents(), buffer.length);
    kelcl::ByteSet const& ascii = kelcl::identityBytes(walk.encoding());
    std::size_t const at = expected ? 0 : kelcl::asciiRun(text.data(), text.size());
    auto const ask = [](int value) { return value >= 0x80 && wcwidth(static_cast<wchar_t>(value)) >= 2; };
    auto const usual = [expected](int) { return expected; };
    return kelcl::withAnswers<bool>(text.size() - at, ask, usual, [&](auto isDouble) {
        return areMembers(text, at, expected ? noBytes : ascii, walk,
                          [&isDouble, expected](int value) { return isDouble(value) == expected; });
    });
}

} // namespace

unsigned int DDBCSBuffer::windexOfAnyBut(DStringTest const& test, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || first > length) return 0;
    std::size_t const found =
        firstRejected(*this, first - 1, [&test](int value) { return test.test(value) != 0; });
    return found == kelcl::notFound ? 0 : static_cast<unsigned int>(found) + 1;
}

bool DDBCSBuffer::isAlphanumeric() const { return charactersConsistOf(kelcl::alphanumeric, *this); }
bool DDBCSBuffer::isAlphabetic() const { return charactersConsistOf(kelcl::alphabetic, *this); }
bool DDBCSBuffer::isASCII() const { return DBuffer::isASCII(); }
bool DDBCSBuffer::isControl() const { return charactersConsistOf(kelcl::control, *this); }
bool DDBCSBuffer::isDigits() const { return charactersConsistOf(kelcl::digits, *this); }
bool DDBCSBuffer::isGraphics() const { return charactersConsistOf(kelcl::graphics, *this); }
bool DDBCSBuffer::isHexDigits() const { return charactersConsistOf(kelcl::hexDigits, *this); }
bool DDBCSBuffer::isLowerCase() const { return charactersConsistOf(kelcl::lowerCase, *this); }
bool DDBCSBuffer::isPrintable() const { return charactersConsistOf(kelcl::printable, *this); }
bool DDBCSBuffer::isPunctuation() const { return charactersConsistOf(kelcl::punctuation, *this); }
bool DDBCSBuffer::isUpperCase() const { return charactersConsistOf(kelcl::upperCase, *this); }
bool DDBCSBuffer::isWhiteSpace() const { return charactersConsistOf(kelcl::whiteSpace, *this); }

bool DDBCSBuffer::isMBCS() const {
    WideWalk walk(*this);
    if (walk.encoding().isUtf8) return haveDoubleWidth(*this, walk, true);
    for (std::size_t at = 0; at < length;) {
        WideCharacter const character = walk.at(contents() + at);
        if (!isDoubleWidth(character)) return false;
        at += character.bytes;
    }
    return true;
}

bool DDBCSBuffer::isSBCS() const {
    WideWalk walk(*this);
    if (walk.encoding().isUtf8) return haveDoubleWidth(*this, walk, false);
    for (std::size_t at = 0; at < length;) {
        at += kelcl::asciiRun(contents() + at, length - at);
        if (at == length) break;
        WideCharacter const character = walk.at(contents() + at);
        if (isDoubleWidth(character)) return false;
        at += character.bytes;
    }
    return true;
}

bool DDBCSBuffer::isValidMBCS() const {
    kelcl::BufferSteps steps;
    if (steps.isUtf8()) {
        std::string_view const text(contents(), length);
        // ASCII bytes are always characters of their own there, and no others are NULs.
        if (kelcl::findFirstIn(text, kelcl::identityBytes(steps.encoding())) != kelcl::notFound) return false;
        if (kelcl::isPlainUtf8(contents(), length)) return true;
    }
    for (std::size_t at = 0; at < length;) {
        unsigned int const bytes = steps.length(contents() + at);
        if (bytes < 2 ||
            std::string_view(contents() + at + 1, bytes - 1).find('\0') != std::string_view::npos)
            return false;
        at += bytes;
    }
    return true;
}

bool DDBCSBuffer::isDBCS() const { return isMBCS(); }
bool DDBCSBuffer::isValidDBCS() const { return isValidMBCS(); }
bool DDBCSBuffer::includesMBCS() const { return !isSBCS(); }
bool DDBCSBuffer::includesDBCS() const { return includesMBCS(); }
bool DDBCSBuffer::includesSBCS() const { return !isDBCS(); }
