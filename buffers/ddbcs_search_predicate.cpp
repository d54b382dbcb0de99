// DDBCSBuffer: searches for what a test accepts or rejects: wide characters with the switch on, and bytes
// with it off.
#include "buffers/ddbcs_search.h"
#include "buffers/wide_path.h"

namespace {

using kelcl::bytesOf;
using kelcl::isWideMode;

int signedByte(char c) { return static_cast<signed char>(c); }

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

/// Wants the characters of which the test, given the first byte, says so.
auto firstByteThat(DStringTest const& test, bool accepts) {
    return
        [&test, accepts](char const* p, unsigned int) { return (test.test(signedByte(*p)) != 0) == accepts; };
}

} // namespace

unsigned int DDBCSBuffer::indexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? indexOfAnyOf(test, start) : DBuffer::indexOf(test, start);
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
    return kelcl::positionOf(kelcl::firstCharacter(*this, first - 1, steps, firstByteThat(test, false)));
}

unsigned int DDBCSBuffer::lastIndexOf(DStringTest const& test, unsigned int start) const {
    return isWideMode() ? lastIndexOfAnyOf(test, start) : DBuffer::lastIndexOf(test, start);
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, true);
    unsigned int const last = kelcl::lastByte(*this, start);
    if (last == 0) return 0;
    kelcl::BufferSteps steps;
    return kelcl::lastWanted(*this, last, steps, firstByteThat(test, true));
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const {
    if (isWideMode()) return lastWide(*this, start, test, false);
    unsigned int const last = kelcl::lastByte(*this, start);
    if (last == 0) return 0;
    kelcl::BufferSteps steps;
    return kelcl::lastWanted(*this, last, steps, firstByteThat(test, false));
}
