// DDBCSBuffer: searches. Scans begin at character starts and stop at character starts; what
// can be found by bytes alone is left to the byte kernels.
#include "buffers/host_classes.h"
#include "buffers/wide_path.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/pattern_matches.h"
#include "characters/character_set.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <string_view>

namespace {

using kelcl::bytesOf;
using kelcl::isWideMode;
using kelcl::notFound;

unsigned int position(std::size_t offset) {
    return offset == notFound ? 0 : static_cast<unsigned int>(offset) + 1;
}

int signedByte(char c) { return static_cast<signed char>(c); }

/// The offset of the first character from `from` on, which is a character start, that `wanted(p, length)`
/// wants.
template <class Wanted>
std::size_t firstCharacter(DBuffer const& text, std::size_t from, kelcl::BufferSteps& steps, Wanted wanted) {
    for (std::size_t at = from; at < text.length;) {
        unsigned int const bytes = steps.length(text.contents() + at);
        if (wanted(text.contents() + at, bytes)) return at;
        at += bytes;
    }
    return notFound;
}

/// The offset of the last character up to the one that contains the byte at `from` that `wanted(p, length)`
/// wants.
template <class Wanted>
std::size_t lastCharacter(DBuffer const& text, std::size_t from, kelcl::BufferSteps& steps, Wanted wanted) {
    kelcl::FallingStarts starts(text.contents(), steps);
    for (std::size_t at = starts.startOf(from);; at = starts.startOf(at - 1)) {
        if (wanted(text.contents() + at, steps.length(text.contents() + at))) return at;
        if (at == 0) return notFound;
    }
}

// What begins with a character is looked for by bytes. The encoding is asked for once there is a place where
// the bytes leave open whether a character begins; what comes then stands by itself, as the room that it
// needs would make every search slower.

template <class Find>
[[gnu::noinline]] unsigned int firstAmong(DBuffer const& text, std::size_t candidate, Find const& find) {
    kelcl::BufferSteps steps;
    kelcl::RisingStarts starts(text.contents(), 0, steps);
    return position(kelcl::firstAtStart(starts, candidate, find));
}

template <class Find>
[[gnu::noinline]] unsigned int lastAmong(DBuffer const& text, std::size_t candidate, Find const& find) {
    kelcl::BufferSteps steps;
    kelcl::FallingStarts starts(text.contents(), steps);
    return position(kelcl::lastAtStart(starts, candidate, find));
}

/// The position of the first character from `from` on, of the last one at or before `from`, with which
/// something begins that `find` finds among the bytes.
template <class Find>
unsigned int firstBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound || kelcl::surelyBeginsCharacter(text.contents(), candidate))
        return position(candidate);
    return firstAmong(text, candidate, find);
}

template <class Find>
unsigned int lastBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound || kelcl::surelyBeginsCharacter(text.contents(), candidate))
        return position(candidate);
    return lastAmong(text, candidate, find);
}

/// The same for texts of more than one byte.
[[gnu::noinline]] unsigned int firstLongText(DBuffer const& buffer, std::size_t from,
                                             std::string_view wanted) {
    kelcl::RisingMatches matches(bytesOf(buffer), wanted);
    return firstBeginning(buffer, from, [&matches](std::size_t offset) { return matches.at(offset); });
}

[[gnu::noinline]] unsigned int lastLongText(DBuffer const& buffer, std::size_t from,
                                            std::string_view wanted) {
    kelcl::FallingMatches matches(bytesOf(buffer), wanted);
    return lastBeginning(buffer, from, [&matches](std::size_t offset) { return matches.at(offset); });
}

/// The position of the first character from `start` on, of the last one at or before `start`, with which some
/// bytes begin. In the library's own class `start` may be inside of a character.
unsigned int firstText(DBuffer const& buffer, unsigned int start, std::string_view wanted) {
    std::size_t const from = std::max(start, 1U) - 1;
    if (wanted.size() != 1) return wanted.empty() ? 0 : firstLongText(buffer, from, wanted);
    return firstBeginning(buffer, from, [text = bytesOf(buffer), byte = wanted.front()](std::size_t offset) {
        return kelcl::findByteFrom(text, byte, offset);
    });
}

unsigned int lastText(DBuffer const& buffer, unsigned int start, std::string_view wanted) {
    std::size_t const last = std::min(start, buffer.length);
    if (last == 0) return 0;
    if (wanted.size() != 1) return wanted.empty() ? 0 : lastLongText(buffer, last - 1, wanted);
    return lastBeginning(buffer, last - 1,
                         [text = bytesOf(buffer), byte = wanted.front()](std::size_t offset) {
                             return kelcl::findLastByte(text.substr(0, offset + 1), byte);
                         });
}

/// Wants the characters whose wide value the test accepts (rejects).
auto valueThat(DStringTest const& test, bool accepts) {
    return [&test, accepts](wchar_t value) { return (test.test(static_cast<int>(value)) != 0) == accepts; };
}

unsigned int firstWide(DBuffer const& buffer, unsigned int start, DStringTest const& test, bool accepts) {
    kelcl::CharacterText text(bytesOf(buffer));
    auto const first = text.firstFrom(std::max(start, 1U));
    if (!first) return 0;
    auto const found = text.findFirst(*first, valueThat(test, accepts));
    return found == text.end() ? 0 : text.position(found);
}

unsigned int lastWide(DBuffer const& buffer, unsigned int start, DStringTest const& test, bool accepts) {
    kelcl::CharacterText text(bytesOf(buffer));
    auto const last = text.after(std::min(buffer.length, start));
    if (last == 0) return 0;
    auto const found = text.findLast(last, valueThat(test, accepts));
    return found == 0 ? 0 : text.position(text.previous(found));
}

// A class that a host derived may begin a search inside of a character, and say what its characters are. Its
// searches go from there character by character.

/// Whether a scan may go on from the position without asking the text about its characters: always in the
/// library's own classes.
bool beginsCharacter(DBuffer const& text, unsigned int position) {
    if (kelcl::isLibraryClass(text)) return true;
    kelcl::BufferSteps steps;
    return kelcl::startOfCharacter(text.contents(), position - 1, steps) == position - 1;
}

/// The same for a scan backwards, which steps by what the text says of its characters.
bool mayStepBack(DBuffer const& text, unsigned int position) {
    return kelcl::isLibraryClass(text) ||
           (kelcl::hasMultiByteCharType(text) && beginsCharacter(text, position));
}

/// Wants the characters at which the pattern stands.
auto beginsWith(DBuffer const& text, std::string_view pattern) {
    return [&text, pattern](char const* p, unsigned int) {
        return bytesOf(text).substr(static_cast<std::size_t>(p - text.contents())).starts_with(pattern);
    };
}

/// The position of the first character from the one at `from` on that `wanted(p, length)` wants.
template <class Wanted>
unsigned int firstByOwnSteps(DBuffer const& text, unsigned int from, Wanted wanted) {
    kelcl::BufferSteps steps;
    return position(firstCharacter(text, from - 1, steps, wanted));
}

/// The position of the last character at or before the one at `from` that `wanted(p, length)` wants, stepping
/// back by the lengths that the text itself gives.
template <class Wanted>
unsigned int lastByOwnSteps(DDBCSBuffer const& text, unsigned int from, Wanted wanted) {
    kelcl::BufferSteps steps;
    for (unsigned int at = from; at != 0;) {
        char const* const p = text.contents() + at - 1;
        if (wanted(p, steps.length(p))) return at;
        at -= std::min(at, text.prevCharLength(at));
    }
    return 0;
}

/// The same where the fast walk may be taken as well.
template <class Wanted>
unsigned int lastWanted(DDBCSBuffer const& text, unsigned int from, kelcl::BufferSteps& steps,
                        Wanted wanted) {
    if (!mayStepBack(text, from)) return lastByOwnSteps(text, from, wanted);
    return position(lastCharacter(text, from - 1, steps, wanted));
}

// Where searches begin. In the library's own class those that find the beginnings of characters may start at
// any byte of one: nothing else of it is found.

unsigned int firstByte(DDBCSBuffer const& text, unsigned int start, unsigned int patternLength) {
    return kelcl::isLibraryClass(text) ? text.DBuffer::startSearch(start, patternLength)
                                       : text.startSearch(start, patternLength);
}

unsigned int lastByte(DDBCSBuffer const& text, unsigned int start, unsigned int patternLength) {
    unsigned int const last = kelcl::isLibraryClass(text)
                                  ? text.DBuffer::startBackwardsSearch(start, patternLength)
                                  : text.startBackwardsSearch(start, patternLength);
    return std::min(last, text.length);
}

/// Wants the characters of which the test, given the first byte, says so.
auto firstByteThat(DStringTest const& test, bool accepts) {
    return
        [&test, accepts](char const* p, unsigned int) { return (test.test(signedByte(*p)) != 0) == accepts; };
}

/// Whether a character of one byte can be found among those of several.
bool isNoCharacter(char byte) {
    return byte != '\0' && !kelcl::standsAloneAnywhere(byte) && kelcl::beginsLongerCharacter(byte);
}

} // namespace

// Start positions

unsigned int DDBCSBuffer::startSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int first = DBuffer::startSearch(start, patternLength);
    if (first == 0) return 0;
    if (kelcl::isLibraryClass(*this)) {
        if (kelcl::surelyBeginsCharacter(contents(), first - 1)) return first;
        kelcl::BufferSteps steps;
        std::size_t const at = kelcl::RisingStarts(contents(), 0, steps).startFrom(first - 1);
        return at < length ? position(at) : 0;
    }
    while (first <= length && charType(first) >= 2)
        ++first;
    return first <= length ? first : 0;
}

unsigned int DDBCSBuffer::startBackwardsSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int last = DBuffer::startBackwardsSearch(start, patternLength);
    if (last == 0) return 0;
    if (kelcl::isLibraryClass(*this)) {
        if (kelcl::surelyBeginsCharacter(contents(), last - 1)) return last;
        kelcl::BufferSteps steps;
        return position(kelcl::startOfCharacter(contents(), last - 1, steps));
    }
    while (last != 0 && charType(last) >= 2)
        --last;
    return last;
}

// Forward searches

unsigned int DDBCSBuffer::indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    if (kelcl::isMultiByteClass(*this)) return firstText(*this, start, {pattern, patternLength});
    if (patternLength == 1) return indexOfAnyOf(pattern, 1, start);
    unsigned int const first = startSearch(start, patternLength);
    if (first == 0 || first > length || patternLength == 0 || patternLength > length - first + 1) return 0;
    if (!beginsCharacter(*this, first))
        return firstByOwnSteps(*this, first, beginsWith(*this, {pattern, patternLength}));
    return firstText(*this, first, {pattern, patternLength});
}

unsigned int DDBCSBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? indexOfAnyOf(test, start) : DBuffer::indexOf(test, start);
}

unsigned int DDBCSBuffer::indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    if (setLength == 1 && kelcl::isMultiByteClass(*this)) return firstText(*this, start, {set, 1});
    unsigned int const first = firstByte(*this, start, 1);
    if (first == 0 || setLength == 0 || first > length) return 0;
    bool const fast = beginsCharacter(*this, first);
    if (setLength == 1) // any character that begins with the byte
        return fast ? firstText(*this, first, {set, 1})
                    : firstByOwnSteps(*this, first, beginsWith(*this, {set, 1}));
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (!fast)
        return position(
            firstCharacter(*this, first - 1, steps, [&members](char const* p, unsigned int bytes) {
                return members.contains(p, bytes);
            }));
    std::size_t const from = kelcl::RisingStarts(contents(), 0, steps).startFrom(first - 1);
    return position(members.findFirst(bytesOf(*this), from, steps));
}

unsigned int DDBCSBuffer::indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0) return first;
    if (setLength == 1 && isNoCharacter(*set)) return first; // no character equals it
    if (first > length) return 0;
    std::string_view const rest = bytesOf(*this).substr(first - 1);
    auto const inRest = [first](std::size_t found) {
        return found == notFound ? 0 : first + static_cast<unsigned int>(found);
    };
    if (setLength == 1) return inRest(kelcl::findByteOtherThan(rest, *set));
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (members.isByteSearchable()) return inRest(kelcl::findFirstNotIn(rest, members.singleBytes()));
    return position(firstCharacter(*this, first - 1, steps, [&members](char const* p, unsigned int bytes) {
        return !members.contains(p, bytes);
    }));
}

unsigned int DDBCSBuffer::indexOfAnyOf(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return firstWide(*this, start, test, true);
    unsigned int const first = startSearch(start, 1);
    if (first == 0) return 0;
    // Every byte, inside of characters too, unlike the search for any but: callers rely on it.
    for (unsigned int at = first; at <= length; ++at)
        if (test.test(signedByte(contents()[at - 1])) != 0) return at;
    return 0;
}

unsigned int DDBCSBuffer::indexOfAnyBut(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return firstWide(*this, start, test, false);
    unsigned int const first = startSearch(start, 1);
    if (first == 0) return 0;
    kelcl::BufferSteps steps;
    return position(firstCharacter(*this, first - 1, steps, firstByteThat(test, false)));
}

// Backward searches

unsigned int DDBCSBuffer::lastIndexOf(char const* pattern, unsigned int patternLength,
                                      unsigned int start) const {
    if (kelcl::isMultiByteClass(*this)) return lastText(*this, start, {pattern, patternLength});
    unsigned int const last = std::min(startBackwardsSearch(start, patternLength), length);
    if (last == 0 || patternLength == 0) return 0;
    if (!mayStepBack(*this, last))
        return lastByOwnSteps(*this, last, beginsWith(*this, {pattern, patternLength}));
    return lastText(*this, last, {pattern, patternLength});
}

unsigned int DDBCSBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? lastIndexOfAnyOf(test, start) : DBuffer::lastIndexOf(test, start);
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(char const* set, unsigned int setLength,
                                           unsigned int start) const {
    unsigned int const last = lastByte(*this, start, 1);
    if (last == 0 || setLength == 0) return 0;
    bool const fast = mayStepBack(*this, last);
    if (setLength == 1)
        return fast ? lastText(*this, last, {set, 1})
                    : lastByOwnSteps(*this, last, beginsWith(*this, {set, 1}));
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (fast) return position(members.findLast(bytesOf(*this), last, steps));
    return lastByOwnSteps(
        *this, last, [&members](char const* p, unsigned int bytes) { return members.contains(p, bytes); });
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(char const* set, unsigned int setLength,
                                            unsigned int start) const {
    if (setLength == 0) return startBackwardsSearch(start, 1);
    unsigned int const last = lastByte(*this, start, 1);
    // Where no character equals a set of one byte, nothing is found, while the forward search finds its
    // start: callers rely on it.
    if (last == 0 || (setLength == 1 && isNoCharacter(*set))) return 0;
    kelcl::BufferSteps steps;
    if (setLength == 1)
        return lastWanted(*this, last, steps, [set](char const* p, unsigned int) { return *p != *set; });
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (members.isByteSearchable() && mayStepBack(*this, last)) {
        std::size_t const found = kelcl::findLastNotIn(bytesOf(*this).substr(0, last), members.singleBytes());
        return found == notFound ? 0 : position(kelcl::startOfCharacter(contents(), found, steps));
    }
    return lastWanted(*this, last, steps,
                      [&members](char const* p, unsigned int bytes) { return !members.contains(p, bytes); });
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, true);
    unsigned int const last = lastByte(*this, start, 1);
    if (last == 0) return 0;
    kelcl::BufferSteps steps;
    return lastWanted(*this, last, steps, firstByteThat(test, true));
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, false);
    unsigned int const last = lastByte(*this, start, 1);
    if (last == 0) return 0;
    kelcl::BufferSteps steps;
    return lastWanted(*this, last, steps, firstByteThat(test, false));
}
