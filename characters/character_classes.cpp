// The eleven character classes.
#include "characters/character_classes.h"

#include <cctype>
#include <cwctype>

namespace kelcl {

namespace {

using Test = int (*)(int);

constexpr bool isUpper(unsigned char c) { return c >= 'A' && c <= 'Z'; }
constexpr bool isLower(unsigned char c) { return c >= 'a' && c <= 'z'; }
constexpr bool isDigit(unsigned char c) { return c >= '0' && c <= '9'; }
constexpr bool isAlpha(unsigned char c) { return isUpper(c) || isLower(c); }
constexpr bool isAlnum(unsigned char c) { return isAlpha(c) || isDigit(c); }
constexpr bool isHex(unsigned char c) {
    return isDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}
constexpr bool isGraph(unsigned char c) { return c > ' ' && c < 0x7F; }
constexpr bool isPrint(unsigned char c) { return c >= ' ' && c < 0x7F; }
constexpr bool isPunct(unsigned char c) { return isGraph(c) && !isAlnum(c); }
constexpr bool isCntrl(unsigned char c) { return c < ' ' || c == 0x7F; }
constexpr bool isSpace(unsigned char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

template <bool (*inAscii)(unsigned char)>
constexpr ByteSet asciiMembers() {
    return ByteSet::where([](unsigned char c) { return c <= 127 && inAscii(c); });
}

/// A class without members beyond 127.
template <bool (*inAscii)(unsigned char)>
constexpr CharacterClass asciiClass() {
    Test const test = [](int c) {
        return c >= 0 && c <= 127 && inAscii(static_cast<unsigned char>(c)) ? 1 : 0;
    };
    return {test, asciiMembers<inAscii>(), nullptr};
}

/// A class of which the locale says what belongs to it beyond 127: of bytes, which arrive negative, and of
/// wide values.
template <bool (*inAscii)(unsigned char), Test ofByte, int (*ofWide)(std::wint_t)>
constexpr CharacterClass localeClass() {
    Test const test = [](int c) {
        if (c >= 0 && c <= 127) return inAscii(static_cast<unsigned char>(c)) ? 1 : 0;
        if (c >= -128 && c < 0) return ofByte(c) != 0 ? 1 : 0;
        return ofWide(static_cast<std::wint_t>(c)) != 0 ? 1 : 0;
    };
    return {test, asciiMembers<inAscii>(), ofWide};
}

} // namespace

constinit CharacterClass const alphanumeric = localeClass<isAlnum, std::isalnum, std::iswalnum>();
constinit CharacterClass const alphabetic = localeClass<isAlpha, std::isalpha, std::iswalpha>();
constinit CharacterClass const control = localeClass<isCntrl, std::iscntrl, std::iswcntrl>();
constinit CharacterClass const digits = asciiClass<isDigit>();
constinit CharacterClass const graphics = localeClass<isGraph, std::isgraph, std::iswgraph>();
constinit CharacterClass const hexDigits = asciiClass<isHex>();
constinit CharacterClass const lowerCase = localeClass<isLower, std::islower, std::iswlower>();
constinit CharacterClass const printable = localeClass<isPrint, std::isprint, std::iswprint>();
constinit CharacterClass const punctuation = localeClass<isPunct, std::ispunct, std::iswpunct>();
constinit CharacterClass const upperCase = localeClass<isUpper, std::isupper, std::iswupper>();
constinit CharacterClass const whiteSpace = localeClass<isSpace, std::isspace, std::iswspace>();

CharacterClass const* classOf(Test function) {
    // Those that are asked for most come first.
    static constexpr CharacterClass const* candidates[] = {
        &whiteSpace, &alphanumeric, &alphabetic, &control,     &digits,   &graphics,
        &hexDigits,  &lowerCase,    &printable,  &punctuation, &upperCase};
    for (CharacterClass const* const candidate : candidates)
        if (candidate->test == function) return candidate;
    return nullptr;
}

namespace {

// The two directions of a walk to the bytes outside of a set: where the next one is, and what is left of a
// text beyond a place.

struct Forwards {
    static std::size_t find(std::string_view text, ByteSet const& members) {
        return findFirstNotIn(text, members);
    }
    static std::string_view beyond(std::string_view text, std::size_t at) { return text.substr(at + 1); }
};

struct Backwards {
    static std::size_t find(std::string_view text, ByteSet const& members) {
        return findLastNotIn(text, members);
    }
    static std::string_view beyond(std::string_view text, std::size_t at) { return text.substr(0, at); }
};

/// Goes on from an offset where a byte that is not ASCII stands, about which the locale is asked.
template <class Direction>
std::size_t goOn(std::string_view text, CharacterClass const& characterClass, std::size_t at) {
    // Asking the locale about all upper bytes costs as much as asking about so many bytes of the text.
    constexpr std::size_t worthATable = 256;
    auto const inLocale = [&](char c) { return characterClass.test(static_cast<signed char>(c)) != 0; };
    for (std::string_view rest = text; static_cast<signed char>(text[at]) < 0 && inLocale(text[at]);) {
        rest = Direction::beyond(rest, at - static_cast<std::size_t>(rest.data() - text.data()));
        bool const isLong = rest.size() >= worthATable;
        std::size_t const found = Direction::find(
            rest, isLong ? ByteSet::where([&](unsigned char c) { return inLocale(static_cast<char>(c)); })
                         : characterClass.ascii);
        if (found == notFound) return notFound;
        at = static_cast<std::size_t>(rest.data() - text.data()) + found;
        if (isLong) return at;
    }
    return at;
}

} // namespace

std::size_t goOnToFirstNotIn(std::string_view text, CharacterClass const& characterClass, std::size_t at) {
    return goOn<Forwards>(text, characterClass, at);
}

std::size_t goOnToLastNotIn(std::string_view text, CharacterClass const& characterClass, std::size_t at) {
    return goOn<Backwards>(text, characterClass, at);
}

} // namespace kelcl
