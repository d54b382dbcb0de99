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

/// The offset of the last character at or before the one that starts at `from` that `wanted(p, length)`
/// wants.
template <class Wanted>
std::size_t lastCharacter(DBuffer const& text, std::size_t from, kelcl::BufferSteps& steps, Wanted wanted) {
    kelcl::FallingStarts starts(text.contents(), steps);
    for (std::size_t at = from;; at = starts.startOf(at - 1)) {
        if (wanted(text.contents() + at, steps.length(text.contents() + at))) return at;
        if (at == 0) return notFound;
    }
}

/// The position of the first (last) character from `from` on (at or before `from`) with which something
/// begins that `find` finds among the bytes. `from` is a character start where the walk is forwards.
template <class Find>
unsigned int firstBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound || candidate == from) return position(candidate);
    kelcl::BufferSteps steps;
    kelcl::RisingStarts starts(text.contents(), from, steps);
    return position(kelcl::firstAtStart(starts, candidate, find));
}

template <class Find>
unsigned int lastBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound) return 0;
    kelcl::BufferSteps steps;
    kelcl::FallingStarts starts(text.contents(), steps);
    return position(kelcl::lastAtStart(starts, candidate, find));
}

/// Finds the last of a byte at or before an offset.
auto lastByte(std::string_view text, char byte) {
    return [text, byte](std::size_t from) { return kelcl::findLastByte(text.substr(0, from + 1), byte); };
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
unsigned int lastWanted(DDBCSBuffer const& text, unsigned int from, Wanted wanted) {
    if (!mayStepBack(text, from)) return lastByOwnSteps(text, from, wanted);
    kelcl::BufferSteps steps;
    return position(lastCharacter(text, from - 1, steps, wanted));
}

} // namespace

// Start positions

unsigned int DDBCSBuffer::startSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int first = DBuffer::startSearch(start, patternLength);
    if (first == 0 || (first == 1 && kelcl::isLibraryClass(*this))) return first;
    while (first <= length && charType(first) >= 2)
        ++first;
    return first <= length ? first : 0;
}

unsigned int DDBCSBuffer::startBackwardsSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int last = DBuffer::startBackwardsSearch(start, patternLength);
    if (last == 0) return 0;
    if (kelcl::isLibraryClass(*this)) return last - (std::max(charType(last), 1U) - 1);
    while (last != 0 && charType(last) >= 2)
        --last;
    return last;
}

// Forward searches

unsigned int DDBCSBuffer::indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    if (patternLength == 1) return indexOfAnyOf(pattern, 1, start);
    unsigned int const first = startSearch(start, patternLength);
    if (first == 0 || first > length || patternLength == 0 || patternLength > length - first + 1) return 0;
    if (!beginsCharacter(*this, first))
        return firstByOwnSteps(*this, first, beginsWith(*this, {pattern, patternLength}));
    kelcl::RisingMatches matches(bytesOf(*this), {pattern, patternLength});
    return firstBeginning(*this, first - 1, [&matches](std::size_t from) { return matches.at(from); });
}

unsigned int DDBCSBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? indexOfAnyOf(test, start) : DBuffer::indexOf(test, start);
}

unsigned int DDBCSBuffer::indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0 || first > length) return 0;
    bool const fromCharacter = beginsCharacter(*this, first);
    if (setLength == 1) { // any character that begins with the byte
        if (!fromCharacter) return firstByOwnSteps(*this, first, beginsWith(*this, {set, 1}));
        return firstBeginning(*this, first - 1, [this, set](std::size_t from) {
            return kelcl::findByteFrom(bytesOf(*this), *set, from);
        });
    }
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (fromCharacter) return position(members.findFirst(bytesOf(*this), first - 1, steps));
    return position(firstCharacter(*this, first - 1, steps, [&members](char const* p, unsigned int bytes) {
        return members.contains(p, bytes);
    }));
}

unsigned int DDBCSBuffer::indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0) return first;
    if (setLength == 1 && *set != '\0' && kelcl::beginsLongerCharacter(*set))
        return first; // no character equals it
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
    return position(firstCharacter(*this, first - 1, steps, [&test](char const* p, unsigned int) {
        return test.test(signedByte(*p)) == 0;
    }));
}

// Backward searches

unsigned int DDBCSBuffer::lastIndexOf(char const* pattern, unsigned int patternLength,
                                      unsigned int start) const {
    unsigned int const last = std::min(startBackwardsSearch(start, patternLength), length);
    if (last == 0 || patternLength == 0) return 0;
    if (!mayStepBack(*this, last))
        return lastByOwnSteps(*this, last, beginsWith(*this, {pattern, patternLength}));
    if (patternLength == 1) return lastBeginning(*this, last - 1, lastByte(bytesOf(*this), *pattern));
    kelcl::FallingMatches matches(bytesOf(*this), {pattern, patternLength});
    return lastBeginning(*this, last - 1, [&matches](std::size_t from) { return matches.at(from); });
}

unsigned int DDBCSBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? lastIndexOfAnyOf(test, start) : DBuffer::lastIndexOf(test, start);
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(char const* set, unsigned int setLength,
                                           unsigned int start) const {
    unsigned int const last = std::min(startBackwardsSearch(start, 1), length);
    if (last == 0 || setLength == 0) return 0;
    bool const fast = mayStepBack(*this, last);
    if (setLength == 1)
        return fast ? lastBeginning(*this, last - 1, lastByte(bytesOf(*this), *set))
                    : lastByOwnSteps(*this, last, beginsWith(*this, {set, 1}));
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (fast) return position(members.findLast(bytesOf(*this), last, steps));
    return lastByOwnSteps(
        *this, last, [&members](char const* p, unsigned int bytes) { return members.contains(p, bytes); });
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(char const* set, unsigned int setLength,
                                            unsigned int start) const {
    unsigned int const last = startBackwardsSearch(start, 1);
    if (last == 0 || setLength == 0) return last;
    unsigned int const from = std::min(last, length);
    if (setLength == 1) {
        // Nothing is found then, where the forward search finds its start: callers rely on it.
        if (*set != '\0' && kelcl::beginsLongerCharacter(*set)) return 0;
        return lastWanted(*this, from, [set](char const* p, unsigned int) { return *p != *set; });
    }
    kelcl::BufferSteps steps;
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (members.isByteSearchable() && mayStepBack(*this, from)) {
        std::size_t const found = kelcl::findLastNotIn(bytesOf(*this).substr(0, from), members.singleBytes());
        return found == notFound ? 0 : position(kelcl::startOfCharacter(contents(), found, steps));
    }
    return lastWanted(*this, from,
                      [&members](char const* p, unsigned int bytes) { return !members.contains(p, bytes); });
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, true);
    unsigned int const last = std::min(startBackwardsSearch(start, 1), length);
    return last == 0 ? 0 : lastWanted(*this, last, [&test](char const* p, unsigned int) {
        return test.test(signedByte(*p)) != 0;
    });
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, false);
    unsigned int const last = std::min(startBackwardsSearch(start, 1), length);
    return last == 0 ? 0 : lastWanted(*this, last, [&test](char const* p, unsigned int) {
        return test.test(signedByte(*p)) == 0;
    });
}
