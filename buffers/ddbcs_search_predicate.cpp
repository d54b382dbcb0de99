// DDBCSBuffer: searches for what a test accepts or rejects: wide characters with the switch on, and bytes
// with it off.
#include "buffers/character_test.h"
#include "buffers/ddbcs_search.h"
#include "buffers/outside_of_class.h"
#include "buffers/wide_path.h"

#include <algorithm>

namespace {

using kelcl::bytesOf;
using kelcl::isWideMode;

int signedByte(char c) { return static_cast<signed char>(c); }

// Wide characters

/// The position of the first (last) character from `start` on (up to it) whose value is wanted.
template <class Wanted>
unsigned int firstWide(DBuffer const& buffer, unsigned int start, Wanted wanted) {
    kelcl::CharacterText text(bytesOf(buffer));
    auto const first = text.firstFrom(std::max(start, 1U));
    if (!first) return 0;
    auto const found = text.findFirst(*first, wanted);
    return found == text.end() ? 0 : text.position(found);
}

template <class Wanted>
unsigned int lastWide(DBuffer const& buffer, unsigned int start, Wanted wanted) {
    kelcl::CharacterText text(bytesOf(buffer));
    auto const last = text.after(std::min(buffer.length, start));
    if (last == 0) return 0;
    auto const found = text.findLast(last, wanted);
    return found == 0 ? 0 : text.position(text.previous(found));
}

// Bytes

/// Wants the characters whose first byte is wanted.
template <class Wanted>
auto byFirstByte(Wanted wanted) {
    return [wanted](char const* p, unsigned int) { return wanted(signedByte(*p)); };
}

template <class Wanted>
unsigned int lastByFirstByte(DDBCSBuffer const& text, unsigned int start, Wanted wanted) {
    unsigned int const last = kelcl::backwardStart(text, start);
    if (last == 0) return 0;
    kelcl::BufferSteps steps;
    return kelcl::lastWanted(text, last, steps, byFirstByte(wanted));
}

unsigned int firstAccepted(DDBCSBuffer const& text, unsigned int start, DStringTest const& test) {
    return kelcl::withTest(test, [&](auto accepts) -> unsigned int {
        if (isWideMode()) return firstWide(text, start, accepts);
        unsigned int const first = text.startSearch(start, 1);
        if (first == 0 || first > text.length) return 0; // a host may say anything
        // Every byte, inside of characters too, unlike the search for any but: callers rely on it.
        std::string_view const rest = bytesOf(text).substr(first - 1);
        auto const found =
            std::find_if(rest.begin(), rest.end(), [accepts](char c) { return accepts(signedByte(c)); });
        return found == rest.end() ? 0 : first + static_cast<unsigned int>(found - rest.begin());
    });
}

unsigned int firstRejected(DDBCSBuffer const& text, unsigned int start, DStringTest const& test) {
    return kelcl::withTest(test, [&](auto accepts) -> unsigned int {
        auto const rejects = [accepts](int value) { return !accepts(value); };
        if (isWideMode()) return firstWide(text, start, rejects);
        unsigned int const first = text.startSearch(start, 1);
        if (first == 0 || first > text.length) return 0; // a host may say anything
        if (kelcl::CharacterClass const* const known = kelcl::searchableClass(test))
            return kelcl::positionOf(kelcl::OutsideOfClass(text, *known).first(first - 1));
        kelcl::BufferSteps steps;
        return kelcl::positionOf(kelcl::firstCharacter(text, first - 1, steps, byFirstByte(rejects)));
    });
}

unsigned int lastAccepted(DDBCSBuffer const& text, unsigned int start, DStringTest const& test) {
    return kelcl::withTest(test, [&](auto accepts) {
        return isWideMode() ? lastWide(text, start, accepts) : lastByFirstByte(text, start, accepts);
    });
}

unsigned int lastRejected(DDBCSBuffer const& text, unsigned int start, DStringTest const& test) {
    return kelcl::withTest(test, [&](auto accepts) {
        auto const rejects = [accepts](int value) { return !accepts(value); };
        if (isWideMode()) return lastWide(text, start, rejects);
        if (kelcl::CharacterClass const* const known = kelcl::searchableClass(test))
            if (kelcl::isMultiByteClass(text))
                return kelcl::positionOf(
                    kelcl::OutsideOfClass(text, *known).last(kelcl::backwardStart(text, start)));
        return lastByFirstByte(text, start, rejects);
    });
}

} // namespace

unsigned int DDBCSBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? indexOfAnyOf(test, start) : DBuffer::indexOf(test, start);
}

unsigned int DDBCSBuffer::indexOfAnyOf(DStringTest const& test, unsigned int start) const {
    return firstAccepted(*this, start, test);
}

unsigned int DDBCSBuffer::indexOfAnyBut(DStringTest const& test, unsigned int start) const {
    return firstRejected(*this, start, test);
}

unsigned int DDBCSBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? lastIndexOfAnyOf(test, start) : DBuffer::lastIndexOf(test, start);
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    return lastAccepted(*this, start, test);
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const {
    return lastRejected(*this, start, test);
}
