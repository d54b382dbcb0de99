// DDBCSBuffer: where searches start, and those for patterns.
#include "buffers/ddbcs_search.h"

#include "buffers/buffer_block.h"
#include "bytes/pattern_matches.h"

namespace {

using kelcl::bytesOf;
using kelcl::notFound;

// What begins with a character is looked for by bytes. The encoding is asked for once there is a place where
// the bytes leave open whether a character begins; what comes then stands by itself, as the room that it
// needs would make every search slower.

template <class Find>
[[gnu::noinline]] unsigned int firstAmong(DBuffer const& text, std::size_t candidate, Find const& find) {
    kelcl::BufferSteps steps;
    kelcl::RisingStarts starts(text.contents(), 0, steps);
    return kelcl::positionOf(kelcl::firstAtStart(starts, candidate, find));
}

template <class Find>
[[gnu::noinline]] unsigned int lastAmong(DBuffer const& text, std::size_t candidate, Find const& find) {
    kelcl::BufferSteps steps;
    kelcl::FallingStarts starts(text.contents(), steps);
    return kelcl::positionOf(kelcl::lastAtStart(starts, candidate, find));
}

/// The position of the first character from `from` on, of the last one at or before `from`, with which
/// something begins that `find` finds among the bytes.
template <class Find>
unsigned int firstBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound || kelcl::surelyBeginsCharacter(text.contents(), candidate))
        return kelcl::positionOf(candidate);
    return firstAmong(text, candidate, find);
}

template <class Find>
unsigned int lastBeginning(DBuffer const& text, std::size_t from, Find const& find) {
    std::size_t const candidate = find(from);
    if (candidate == notFound || kelcl::surelyBeginsCharacter(text.contents(), candidate))
        return kelcl::positionOf(candidate);
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

[[gnu::noinline]] unsigned int hostIndexOf(DDBCSBuffer const& text, std::string_view pattern,
                                           unsigned int start) {
    auto const bytes = static_cast<unsigned int>(pattern.size());
    if (bytes == 1) return text.indexOfAnyOf(pattern.data(), 1, start);
    unsigned int const first = text.startSearch(start, bytes);
    if (first == 0 || first > text.length || bytes == 0 || bytes > text.length - first + 1) return 0;
    if (!kelcl::beginsCharacter(text, first))
        return kelcl::firstByOwnSteps(text, first, kelcl::beginsWith(text, pattern));
    return kelcl::firstText(text, first, pattern);
}

[[gnu::noinline]] unsigned int hostLastIndexOf(DDBCSBuffer const& text, std::string_view pattern,
                                               unsigned int start) {
    auto const bytes = static_cast<unsigned int>(pattern.size());
    unsigned int const last = std::min(text.startBackwardsSearch(start, bytes), text.length);
    if (last == 0 || bytes == 0) return 0;
    if (!kelcl::mayStepBack(text, last))
        return kelcl::lastByOwnSteps(text, last, kelcl::beginsWith(text, pattern));
    return kelcl::lastText(text, last, pattern);
}

} // namespace

namespace kelcl {

unsigned int firstText(DBuffer const& buffer, unsigned int start, std::string_view wanted) {
    std::size_t const from = std::max(start, 1U) - 1;
    if (wanted.size() != 1) return wanted.empty() ? 0 : firstLongText(buffer, from, wanted);
    return firstBeginning(buffer, from, [text = bytesOf(buffer), byte = wanted.front()](std::size_t offset) {
        return findByteFrom(text, byte, offset);
    });
}

unsigned int lastText(DBuffer const& buffer, unsigned int start, std::string_view wanted) {
    std::size_t const last = std::min(start, buffer.length);
    if (last == 0) return 0;
    if (wanted.size() != 1) return wanted.empty() ? 0 : lastLongText(buffer, last - 1, wanted);
    return lastBeginning(buffer, last - 1,
                         [text = bytesOf(buffer), byte = wanted.front()](std::size_t offset) {
                             return findLastByte(text.substr(0, offset + 1), byte);
                         });
}

bool beginsCharacter(DDBCSBuffer const& text, unsigned int position) {
    if (isMultiByteClass(text)) return true;
    BufferSteps steps;
    return startOfCharacter(text.contents(), position - 1, steps) == position - 1;
}

bool mayStepBack(DDBCSBuffer const& text, unsigned int position) {
    return isMultiByteClass(text) || (hasMultiByteCharType(text) && beginsCharacter(text, position));
}

} // namespace kelcl

// Start positions

unsigned int DDBCSBuffer::startSearch(unsigned int start, unsigned int patternLength) const {
    unsigned int first = DBuffer::startSearch(start, patternLength);
    if (first == 0) return 0;
    if (kelcl::isLibraryClass(*this)) {
        if (kelcl::surelyBeginsCharacter(contents(), first - 1)) return first;
        kelcl::BufferSteps steps;
        std::size_t const at = kelcl::RisingStarts(contents(), 0, steps).startFrom(first - 1);
        return at < length ? kelcl::positionOf(at) : 0;
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
        return kelcl::positionOf(kelcl::startOfCharacter(contents(), last - 1, steps));
    }
    while (last != 0 && charType(last) >= 2)
        --last;
    return last;
}

// Patterns

unsigned int DDBCSBuffer::indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const {
    if (!kelcl::isMultiByteClass(*this)) return hostIndexOf(*this, {pattern, patternLength}, start);
    return kelcl::firstText(*this, start, {pattern, patternLength});
}

unsigned int DDBCSBuffer::lastIndexOf(char const* pattern, unsigned int patternLength,
                                      unsigned int start) const {
    if (!kelcl::isMultiByteClass(*this)) return hostLastIndexOf(*this, {pattern, patternLength}, start);
    return kelcl::lastText(*this, start, {pattern, patternLength});
}
