// DDBCSBuffer: searches for characters of a set.
#include "buffers/buffer_block.h"
#include "buffers/ddbcs_search.h"
#include "bytes/byte_set.h"
#include "characters/character_set.h"
#include "characters/value_set.h"

#include <bit>
#include <cstddef>
#include <cstdint>
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

constexpr kelcl::ByteSet continuations =
    kelcl::ByteSet::where([](unsigned char byte) { return kelcl::isContinuation(static_cast<char>(byte)); });

/// The bytes with which the characters of a list begin, if it is short and plain UTF-8, and they are few.
class FirstBytes {
public:
    explicit FirstBytes(std::string_view list) {
        constexpr std::size_t bitsOfMask = 64;
        if (list.size() > bitsOfMask || !kelcl::isPlainUtf8(list.data(), list.size())) return;
        for (std::uint64_t others = kelcl::maskOfStartNotIn(list, continuations); others != 0;) {
            if (count_ == most) {
                count_ = 0;
                return;
            }
            char const next = list[static_cast<std::size_t>(std::countr_zero(others))];
            bytes_[count_++] = next;
            others &= ~kelcl::maskOfStart(list, next);
        }
    }

    bool areKnown() const { return count_ != 0; }
    /// Where the first of them is from an offset on, or notFound.
    std::size_t find(std::string_view text, std::size_t from) const {
        std::size_t const found = kelcl::findFirstIn(text.substr(from), std::string_view(bytes_, count_));
        return found == notFound ? notFound : from + found;
    }

private:
    static constexpr std::size_t most = 4;
    char bytes_[most];
    std::size_t count_ = 0;
};

/// Whether the character at an offset is one of a list of plain UTF-8.
bool isMember(std::string_view list, std::string_view text, std::size_t at) {
    std::size_t const length = kelcl::plainUtf8Length(text.data() + at, text.size() - at);
    return length != 0 && kelcl::findPattern(list, text.substr(at, length)) != notFound;
}

/// Searches UTF-8 for the first member of a list, by the bytes with which members begin: these stand in no
/// other place of a character. Where they often begin others, by the values of all characters.
kelcl::SearchedSoFar findMember(std::string_view text, std::size_t from, std::string_view list) {
    constexpr int worthTrying = 8;
    FirstBytes const first(list);
    std::size_t next = from;
    for (int trial = 0; first.areKnown() && trial < worthTrying; ++trial) {
        from = first.find(text, next);
        if (from == notFound) return {text.size(), true};
        if (isMember(list, text, from)) return {from, true};
        next = from + 1;
    }
    kelcl::ValueSet members;
    if (!members.take(list) || !members.hasFew()) return {from, false};
    return kelcl::findFirstIn(text, from, members);
}

/// The same for the first character that is none.
kelcl::SearchedSoFar findOther(std::string_view text, std::string_view list) {
    kelcl::ValueSet members;
    return members.take(list) ? kelcl::findFirstNotIn(text, 0, members) : kelcl::SearchedSoFar{0, false};
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
    if (!fast) {
        kelcl::CharacterSet const members(set, setLength, steps.encoding());
        return kelcl::positionOf(
            kelcl::firstCharacter(*this, first - 1, steps, [&members](char const* p, unsigned int bytes) {
                return members.contains(p, bytes);
            }));
    }
    std::size_t from = kelcl::RisingStarts(contents(), 0, steps).startFrom(first - 1);
    if (steps.isUtf8()) {
        kelcl::SearchedSoFar const searched = findMember(bytesOf(*this), from, {set, setLength});
        if (searched.isEnd) return searched.at >= length ? 0 : kelcl::positionOf(searched.at);
        from = searched.at;
    }
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
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
    std::size_t skipped = 0;
    if (steps.isUtf8()) {
        kelcl::SearchedSoFar const searched = findOther(rest, {set, setLength});
        if (searched.isEnd) return inRest(searched.at == rest.size() ? notFound : searched.at);
        skipped = searched.at;
    }
    kelcl::CharacterSet const members(set, setLength, steps.encoding());
    return kelcl::positionOf(kelcl::firstCharacter(
        *this, first - 1 + skipped, steps,
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
