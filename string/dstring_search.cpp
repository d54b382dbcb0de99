// DString: substrings, counting and matching.
#include "string/buffer_factory.h"
#include "string/byte_search.h"
#include "string/known_start.h"
#include "string/virtual_answers.h"
#include "string/wildcard.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <string_view>

namespace {

/// Counts the matches of `bytes` bytes that `find` finds from `startPos` on.
template <class Find>
unsigned int countMatches(DBuffer const& text, unsigned int bytes, unsigned int startPos, Find find) {
    kelcl::KnownStart const known(text.contents());
    kelcl::FoundMatches matches(text, bytes, startPos, find);
    unsigned int count = 0;
    while (matches.next() != 0)
        ++count;
    return count;
}

/// Counts the characters that satisfy another test, and lets a search go on to the end.
class CountingTest final : public DStringTest {
public:
    explicit CountingTest(DStringTest const& counted)
        : DStringTest(plainFunction + 1, nullptr), counted_(counted) {}

    int test(int c) const override {
        if (counted_.test(c) != 0) ++count_;
        return 0;
    }
    unsigned int count() const { return count_; }

private:
    DStringTest const& counted_;
    mutable unsigned int count_ = 0;
};

} // namespace

DString DString::subString(unsigned int start) const {
    if (start > length()) return DString();
    if (fgI18NState == 1) return DString(buffer()->subString(start));
    // A start of 0 asks for one byte more than there is and gets it as a blank: callers rely on it.
    return DString(buffer()->subString(start, length() - start + 1, ' '));
}

DString DString::subString(unsigned int start, unsigned int count, char padCharacter) const {
    return DString(buffer()->subString(start, count, padCharacter));
}

unsigned int DString::occurrencesOf(char c, unsigned int startPos) const {
    return occurrencesOf(&c, 1, startPos);
}

unsigned int DString::occurrencesOf(DStringTest const& test, unsigned int startPos) const {
    DString const held(*this); // the test may change this string
    if (fgI18NState == 1 && kelcl::isOfLibraryClass(*buffer()) && !kelcl::isPlain(*buffer())) {
        // Each search would convert all of the text; one of them asks the test for the same characters.
        CountingTest const counting(test);
        held.indexOf(counting, startPos);
        return counting.count();
    }
    return countMatches(*held.buffer(), 1, startPos,
                        [&](unsigned int from) { return held.indexOf(test, from); });
}

unsigned int DString::occurrencesOf(char const* pattern, unsigned int patternLength,
                                    unsigned int startPos) const {
    if (patternLength != 0 && kelcl::goesByBytes(*buffer(), *pattern)) {
        unsigned int const first = std::max(startPos, 1U);
        if (first > length()) return 0;
        std::string_view const rest = std::string_view(*this).substr(first - 1);
        return static_cast<unsigned int>(patternLength == 1
                                             ? kelcl::countByte(rest, *pattern)
                                             : kelcl::countPattern(rest, {pattern, patternLength}));
    }
    return countMatches(*buffer(), patternLength, startPos,
                        [&](unsigned int from) { return buffer()->indexOf(pattern, patternLength, from); });
}

bool DString::isAbbrevFor(char const* full, unsigned int fullLength, unsigned int minLength) const {
    unsigned int const own = length();
    unsigned int const least = minLength == 0 ? own : minLength;
    if (fullLength < own || least > own) return false;
    return order(full, own) == 0;
}

bool DString::isLike(char const* pattern, unsigned int patternLength, char anyString, char anyChar) const {
    if (order(pattern, patternLength) == 0) return true;
    return kelcl::matchesWildcard(*this, {pattern, patternLength}, anyString, anyChar);
}
