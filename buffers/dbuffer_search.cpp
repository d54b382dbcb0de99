// DStringTest, and the searches of DBuffer: the rules of positions, starts and empty sets, over the byte
// kernels.
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/word_separators.h"
#include "characters/character_classes.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <string_view>
#include <typeinfo>

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

/// A test of bytes as searches ask it: a plain one by its function at once, or by the set of the bytes that
/// it accepts where that is one of the library's classes. A test of a type that a host derived may answer as
/// it likes, and is asked each time.
class Tested {
public:
    Tested(DStringTest const& test, int (*function)(int))
        : test_(test), function_(&typeid(test) == &typeid(DStringTest) ? function : nullptr) {}

    /// The position of the first (last) byte from `start` on (up to it) that is accepted, or of one that is
    /// not; 0 if there is none.
    template <bool wanted>
    unsigned int first(DBuffer const& text, unsigned int start) const {
        std::string_view const rest = from(text, start);
        return withAnswers([&](auto accepts) -> unsigned int {
            auto const found =
                std::find_if(rest.begin(), rest.end(), [&](char c) { return accepts(c) == wanted; });
            return found == rest.end() ? 0 : start + static_cast<unsigned int>(found - rest.begin());
        });
    }
    template <bool wanted>
    unsigned int last(DBuffer const& text, unsigned int start) const {
        std::string_view const head = upTo(text, start);
        return withAnswers([&](auto accepts) {
            auto const found =
                std::find_if(head.rbegin(), head.rend(), [&](char c) { return accepts(c) == wanted; });
            return static_cast<unsigned int>(head.rend() - found);
        });
    }

    kelcl::CharacterClass const* knownClass() const { return kelcl::classOf(function_); }

private:
    template <class Search>
    unsigned int withAnswers(Search search) const {
        if (int (*const function)(int) = function_; function != nullptr)
            return search([function](char c) { return function(static_cast<signed char>(c)) != 0; });
        return search([this](char c) { return test_.test(static_cast<signed char>(c)) != 0; });
    }

    DStringTest const& test_;
    int (*function_)(int);
};

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
    if (patternLength == 1) return indexOfAnyOf(pattern, 1, start);
    unsigned int const first = startSearch(start, patternLength);
    if (first == 0 || patternLength == 0) return 0;
    return position(kelcl::findPattern(from(*this, first), {pattern, patternLength}), first);
}

unsigned int DBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return indexOfAnyOf(test, start);
}

unsigned int DBuffer::indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    if (first == 0 || setLength == 0) return 0;
    std::string_view const rest = from(*this, first);
    if (setLength == 1) return position(kelcl::findByte(rest, *set), first);
    return kelcl::withSet(set, setLength, [&](auto const& members) {
        return position(kelcl::findFirstIn(rest, members), first);
    });
}

unsigned int DBuffer::indexOfAnyOf(DStringTest const& test, unsigned int start) const {
    unsigned int const first = startSearch(start, 1);
    return first == 0 ? 0
                      : Tested(test, test.kind_ == DStringTest::plainFunction ? test.function_ : nullptr)
                            .first<true>(*this, first);
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
    Tested const tested(test, test.kind_ == DStringTest::plainFunction ? test.function_ : nullptr);
    if (kelcl::CharacterClass const* const known = tested.knownClass())
        return position(kelcl::findFirstNotIn(from(*this, first), *known), first);
    return tested.first<false>(*this, first);
}

unsigned int DBuffer::lastIndexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    unsigned int const last = startBackwardsSearch(start, patternLength);
    if (last == 0 || patternLength == 0) return 0;
    std::string_view const head = upTo(*this, last + patternLength - 1);
    if (patternLength == 1) return position(kelcl::findLastByte(head, *pattern), 1);
    return position(kelcl::findLastPattern(head, {pattern, patternLength}), 1);
}

unsigned int DBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return lastIndexOfAnyOf(test, start);
}

unsigned int DBuffer::lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    unsigned int const last = startBackwardsSearch(start, 1);
    if (last == 0 || setLength == 0) return 0;
    std::string_view const head = upTo(*this, last);
    if (setLength == 1) return position(kelcl::findLastByte(head, *set), 1);
    return kelcl::withSet(set, setLength,
                          [&](auto const& members) { return position(kelcl::findLastIn(head, members), 1); });
}

unsigned int DBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    return Tested(test, test.kind_ == DStringTest::plainFunction ? test.function_ : nullptr)
        .last<true>(*this, startBackwardsSearch(start, 1));
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
    Tested const tested(test, test.kind_ == DStringTest::plainFunction ? test.function_ : nullptr);
    if (kelcl::CharacterClass const* const known = tested.knownClass())
        return position(kelcl::findLastNotIn(upTo(*this, last), *known), 1);
    return tested.last<false>(*this, last);
}
