// DDBCSBuffer: searches for characters of a set.
#include "buffers/buffer_block.h"
#include "buffers/ddbcs_search.h"
#include "bytes/byte_set.h"
#include "characters/character_set.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

using kelcl::bytesOf;
using kelcl::notFound;

/// Whether a character of one byte can be found among those of several.
bool isNoCharacter(char byte) {
    return byte != '\0' && !kelcl::standsAloneAnywhere(byte) && kelcl::beginsLongerCharacter(byte);
}

/// The set of some bytes if none of them can ever be part of a longer character, so that a search may go by
/// bytes.
std::optional<kelcl::ByteSet> byteSetOf(std::string_view bytes, kelcl::BufferSteps const& steps) {
    return steps.standAlone(bytes) ? std::optional<kelcl::ByteSet>(bytes) : std::nullopt;
}

/// Widens plain UTF-8 a piece at a time, and calls `use(values, n)` with the values of each; whether it was
/// all of the text, and `use` always went on.
template <class Use>
bool widenInPieces(std::string_view text, std::size_t& at, Use use) {
    wchar_t values[256];
    while (at < text.size()) {
        std::size_t const most = std::min(text.size() - at, std::size(values));
        kelcl::Extent const run = kelcl::widenUtf8(values, text.data() + at, most);
        if (run.bytes == 0 || !use(values, run.characters)) return false;
        at += run.bytes;
    }
    return true;
}

struct Skipped {
    std::size_t bytes;
    bool isAll; ///< Whether what comes then, if anything does, is known to be no member.
};

/// Skips the members of a set at the front of a text as far as both are plain UTF-8, by their values.
Skipped skipMembers(std::string_view text, std::string_view set) {
    kelcl::CharacterMap members;
    Skipped skipped{0, false};
    std::size_t listed = 0;
    bool const isPlain = widenInPieces(set, listed, [&members](wchar_t const* values, std::size_t n) {
        for (std::size_t i = 0; i < n; ++i)
            members.add(kelcl::CharacterMap::keyOf(values[i]));
        return true;
    });
    if (!isPlain) return skipped;
    std::size_t inLastPiece = 0;
    bool const isEnd = widenInPieces(text, skipped.bytes, [&](wchar_t const* values, std::size_t n) {
        wchar_t const* const other = std::find_if_not(values, values + n, [&members](wchar_t value) {
            return members.contains(kelcl::CharacterMap::keyOf(value));
        });
        if (other == values + n) return true;
        for (wchar_t const* value = values; value != other; ++value)
            inLastPiece += kelcl::utf8LengthOf(*value);
        skipped.isAll = true;
        return false;
    });
    return {skipped.bytes + inLastPiece, skipped.isAll || isEnd};
}

} // namespace

unsigned int DDBCSBuffer::indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const {
    if (setLength == 1 && kelcl::isMultiByteClass(*this)) return kelcl::firstText(*this, start, {set, 1});
    unsigned int const first = kelcl::forwardStart(*this, start);
    if (first == 0 || setLength == 0 || first > length) return 0;
    bool const fast = kelcl::beginsCharacter(*this, first);
    if (setLength == 1) // any character that begins with the byte
        return fast ? kelcl::firstText(*this, first, {set, 1})
                    : kelcl::firstByOwnSteps(*this, first, kelcl::beginsWith(*this, {set, 1}));
    kelcl::BufferSteps steps;
    if (auto const bytes = byteSetOf({set, setLength}, steps); bytes && fast) {
        std::size_t const found = kelcl::findFirstIn(bytesOf(*this).substr(first - 1), *bytes);
        return found == notFound ? 0 : first + static_cast<unsigned int>(found);
    }
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (!fast)
        return kelcl::positionOf(
            kelcl::firstCharacter(*this, first - 1, steps, [&members](char const* p, unsigned int bytes) {
                return members.contains(p, bytes);
            }));
    std::size_t const from = kelcl::RisingStarts(contents(), 0, steps).startFrom(first - 1);
    return kelcl::positionOf(members.findFirst(bytesOf(*this), from, steps));
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
    if (auto const bytes = byteSetOf({set, setLength}, steps))
        return inRest(kelcl::findFirstNotIn(rest, *bytes));
    Skipped const skipped = steps.isUtf8() ? skipMembers(rest, {set, setLength}) : Skipped{0, false};
    if (skipped.isAll) return inRest(skipped.bytes == rest.size() ? notFound : skipped.bytes);
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    return kelcl::positionOf(kelcl::firstCharacter(
        *this, first - 1 + skipped.bytes, steps,
        [&members](char const* p, unsigned int bytes) { return !members.contains(p, bytes); }));
}

unsigned int DDBCSBuffer::lastIndexOfAnyOf(char const* set, unsigned int setLength,
                                           unsigned int start) const {
    unsigned int const last = kelcl::backwardStart(*this, start);
    if (last == 0 || setLength == 0) return 0;
    bool const fast = kelcl::mayStepBack(*this, last);
    if (setLength == 1)
        return fast ? kelcl::lastText(*this, last, {set, 1})
                    : kelcl::lastByOwnSteps(*this, last, kelcl::beginsWith(*this, {set, 1}));
    kelcl::BufferSteps steps;
    if (auto const bytes = byteSetOf({set, setLength}, steps); bytes && fast)
        return kelcl::positionOf(kelcl::findLastIn(bytesOf(*this).substr(0, last), *bytes));
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    if (fast) return kelcl::positionOf(members.findLast(bytesOf(*this), last, steps));
    return kelcl::lastByOwnSteps(
        *this, last, [&members](char const* p, unsigned int bytes) { return members.contains(p, bytes); });
}

unsigned int DDBCSBuffer::lastIndexOfAnyBut(char const* set, unsigned int setLength,
                                            unsigned int start) const {
    if (setLength == 0) return startBackwardsSearch(start, 1);
    unsigned int const last = kelcl::backwardStart(*this, start);
    // Where no character equals a set of one byte, nothing is found, while the forward search finds its
    // start: callers rely on it.
    if (last == 0 || (setLength == 1 && isNoCharacter(*set))) return 0;
    kelcl::BufferSteps steps;
    if (setLength == 1)
        return kelcl::lastWanted(*this, last, steps,
                                 [set](char const* p, unsigned int) { return *p != *set; });
    if (auto const bytes = byteSetOf({set, setLength}, steps); bytes && kelcl::mayStepBack(*this, last)) {
        std::size_t const found = kelcl::findLastNotIn(bytesOf(*this).substr(0, last), *bytes);
        return found == notFound ? 0 : kelcl::positionOf(kelcl::startOfCharacter(contents(), found, steps));
    }
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    return kelcl::lastWanted(*this, last, steps, [&members](char const* p, unsigned int bytes) {
        return !members.contains(p, bytes);
    });
}
