// DDBCSBuffer: searches for what a test accepts or rejects: wide characters with the switch on, and bytes
// with it off.
#include "buffers/character_test.h"
#include "buffers/ddbcs_search.h"
#include "buffers/wide_path.h"
#include "characters/character_classes.h"

#include <algorithm>
#include <optional>

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

/// Whether all bytes that a class has in ASCII stand alone in every encoding, as those of white space do.
bool standsAloneAnywhere(kelcl::CharacterClass const& members) {
    constexpr unsigned int bitsBelow30 = 3; // one for each 16 values
    unsigned int bits = 0;
    for (std::size_t row = 0; row < 16; ++row)
        bits |= members.ascii.rows()[row];
    return bits >> bitsBelow30 == 0;
}

/// The class of the library's own that the test is for, if it is such a one.
kelcl::CharacterClass const* searchableClass(DStringTest const& test) {
    kelcl::CharacterClass const* const known = kelcl::classOf(kelcl::functionOf(test));
    return known != nullptr && standsAloneAnywhere(*known) ? known : nullptr;
}

/// A search for the characters outside of such a class: the bytes that it has in ASCII are skipped by the
/// byte kernels, and it is asked about what is in between.
class OutsideOfClass {
public:
    OutsideOfClass(DBuffer const& text, kelcl::CharacterClass const& members)
        : text_(text), members_(members) {}

    /// The offset of the first one from the character start `at` on, or notFound.
    std::size_t first(std::size_t at) {
        for (;;) {
            std::size_t const found = kelcl::findFirstNotIn(bytesOf(text_).substr(at), members_.ascii);
            if (found == kelcl::notFound) return found;
            at += found;
            if (isOutside(at)) return at;
            at += steps().length(text_.contents() + at);
        }
    }

    /// The offset of the last one up to the character that contains the byte before `end`, or notFound.
    std::size_t last(std::size_t end) {
        while (end != 0) {
            end = kelcl::findLastNotIn(bytesOf(text_).substr(0, end), members_.ascii);
            if (end == kelcl::notFound) return end;
            if (!kelcl::surelyBeginsCharacter(text_.contents(), end)) {
                if (!starts_) starts_.emplace(text_.contents(), steps());
                end = starts_->startOf(end);
            }
            if (isOutside(end)) return end;
        }
        return kelcl::notFound;
    }

private:
    bool isOutside(std::size_t at) const { return members_.test(signedByte(text_.contents()[at])) == 0; }

    kelcl::BufferSteps& steps() {
        if (!steps_) steps_.emplace();
        return *steps_;
    }

    DBuffer const& text_;
    kelcl::CharacterClass const& members_;
    std::optional<kelcl::BufferSteps> steps_; // asked for where it is needed
    std::optional<kelcl::FallingStarts> starts_;
};

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
        if (kelcl::CharacterClass const* const known = searchableClass(test))
            return kelcl::positionOf(OutsideOfClass(text, *known).first(first - 1));
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
        if (kelcl::CharacterClass const* const known = searchableClass(test))
            if (kelcl::isMultiByteClass(text))
                return kelcl::positionOf(
                    OutsideOfClass(text, *known).last(kelcl::backwardStart(text, start)));
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
