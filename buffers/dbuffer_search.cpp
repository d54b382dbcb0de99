// DStringTest, and the searches of DBuffer: the rules of positions, starts and empty sets, over the byte
// kernels.
#include "buffers/character_test.h"
#include "buffers/host_classes.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/word_separators.h"
#include "characters/character_classes.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <string_view>

DStringTest::DStringTest(int (*function)(int)) : DStringTest(plainFunction, function) {}

DStringTest::DStringTest(std::uint32_t kind, int (*function)(int)) : kind_(kind), function_(function) {}

DStringTest::~DStringTest() = default;

int DStringTest::test(int c) const {
    return kind_ == plainFunction && function_ != nullptr ? function_(c) : 0;
}

namespace {

/// The text from position `start` on, empty for 0 and beyond the end.
std::string_view from(DBuffer const& text, unsigned int start) {
    if (start == 0 || start > text.length) return {};
    return {text.contents() + start - 1, text.length - start + 1};
}

/// The text up to position `last`.
std::string_view upTo(DBuffer const& text, unsigned int last) {
    return {text.contents(), std::min(last, text.length)};
}

/// The position of what was found at an offset of the text from `start` on, 0 for nothing.
unsigned int position(std::size_t offset, unsigned int start) {
    return offset == kelcl::notFound ? 0 : start + static_cast<unsigned int>(offset);
}

/// The position of the first (last) byte from `start` on (up to it) that is accepted, or of one that is not;
/// 0 if there is none.
template <bool wanted>
unsigned int firstTested(DBuffer const& text, unsigned int start, DStringTest const& test) {
    std::string_view const rest = from(text, start);
    return kelcl::withTest(test, [&](auto accepts) -> unsigned int {
        auto const found = std::find_if(
            rest.begin(), rest.end(), [&](char c) { return accepts(static_cast<signed char>(c)) == wanted; });
        return found == rest.end() ? 0 : start + static_cast<unsigned int>(found - rest.begin());
    });
}
template <bool wanted>
unsigned int lastTested(DBuffer const& text, unsigned int start, DStringTest const& test) {
    std::string_view const head = upTo(text, start);
    return kelcl::withTest(test, [&](auto accepts) {
        auto const found = std::find_if(head.rbegin(), head.rend(), [&](char c) {
            return accepts(static_cast<signed char>(c)) == wanted;
        });
        return static_cast<unsigned int>(head.rend() - found);
    });
}

// Functions of their own, so that the short ones need not do what the long ones begin with.

[[gnu::noinline]] unsigned int firstPattern(DBuffer const& text, std::string_view pattern,
                                            unsigned int start) {
    unsigned int const first = text.startSearch(start, static_cast<unsigned int>(pattern.size()));
    if (first == 0 || pattern.empty()) return 0;
    return position(kelcl::findPattern(from(text, first), pattern), first);
}

[[gnu::noinline]] unsigned int firstByte(DBuffer const& text, char byte, unsigned int start) {
    unsigned int const first = text.startSearch(start, 1);
    return first == 0 ? 0 : position(kelcl::findByte(from(text, first), byte), first);
}

[[gnu::noinline]] unsigned int lastByte(DBuffer const& text, char byte, unsigned int start) {
    return position(kelcl::findLastByte(upTo(text, text.startBackwardsSearch(start, 1)), byte), 1);
}

} // namespace

unsigned int DBuffer::startSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int const first = std::max(start, 1U);
    if (first > length || patternLength > length - first + 1) return 0;
    return first;
}

unsigned int DBuffer::startBackwardsSearch(unsigned int start, unsigned int patternLength) const {
    if (patternLength > length) return 0;
    // An empty pattern leaves length + 1, which `length` bounds.
    return std::min({start, length, length - patternLength + 1});
}

unsigned int DBuffer::indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    if (patternLength != 1) return firstPattern(*this, {pattern, patternLength}, start);
    if (kelcl::isSingleByteClass(*this)) return firstByte(*this, *pattern, start);
    return indexOfAnyOf(pattern, 1, start);
}

unsigned int DBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return indexOfAnyOf(test, start);
}

unsigned int DBuffer::indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    if (setLength == 1) return firstByte(*this, *set, start);
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0) return 0;
    std::string_view const rest = from(*this, first);
    return kelcl::withSet(set, setLength, [&](auto const& members) {
        return position(kelcl::findFirstIn(rest, members), first);
    });
}

unsigned int DBuffer::indexOfAnyOf(DStringTest const& test, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    return first == 0 ? 0 : firstTested<true>(*this, first, test);
}

unsigned int DBuffer::indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0) return first; // every byte is outside an empty set
    std::string_view const rest = from(*this, first);
    if (setLength == 1) return position(kelcl::findByteOtherThan(rest, *set), first);
    return kelcl::withSet(set, setLength, [&](auto const& members) {
        return position(kelcl::findFirstNotIn(rest, members), first);
    });
}

unsigned int DBuffer::indexOfAnyBut(DStringTest const& test, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0) return 0;
    if (kelcl::CharacterClass const* const known = kelcl::classOf(kelcl::functionOf(test)))
        return position(kelcl::findFirstNotIn(from(*this, first), *known), first);
    return firstTested<false>(*this, first, test);
}

unsigned int DBuffer::lastIndexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    if (patternLength == 1) return lastByte(*this, *pattern, start);
    unsigned int const last = startBackwardsSearch(start, patternLength);
    if (last == 0 || patternLength == 0) return 0;
    std::string_view const head = upTo(*this, last + patternLength - 1);
    return position(kelcl::findLastPattern(head, {pattern, patternLength}), 1);
}

unsigned int DBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return lastIndexOfAnyOf(test, start);
}

unsigned int DBuffer::lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    if (setLength == 1) return lastByte(*this, *set, start);
    unsigned int const last = startBackwardsSearch(start, 1);
    if (last == 0 || setLength == 0) return 0;
    std::string_view const head = upTo(*this, last);
    return kelcl::withSet(set, setLength,
                          [&](auto const& members) { return position(kelcl::findLastIn(head, members), 1); });
}

unsigned int DBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    return lastTested<true>(*this, startBackwardsSearch(start, 1), test);
}

unsigned int DBuffer::lastIndexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const last = startBackwardsSearch(start, 1);
    if (last == 0 || setLength == 0) return last; // every byte is outside an empty set
    std::string_view const head = upTo(*this, last);
    if (setLength == 1) return position(kelcl::findLastByteOtherThan(head, *set), 1);
    return kelcl::withSet(set, setLength, [&](auto const& members) {
        return position(kelcl::findLastNotIn(head, members), 1);
    });
}

unsigned int DBuffer::lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const {
    unsigned int const last = startBackwardsSearch(start, 1);
    if (kelcl::CharacterClass const* const known = kelcl::classOf(kelcl::functionOf(test)))
        return position(kelcl::findLastNotIn(upTo(*this, last), *known), 1);
    return lastTested<false>(*this, last, test);
}
