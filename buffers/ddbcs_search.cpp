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

/// From a place on where the bytes of the wanted text stand.
[[gnu::noinline]] unsigned int firstAmong(DBuffer const& buffer, std::size_t candidate,
                                          std::string_view wanted) {
    kelcl::BufferSteps steps;
    kelcl::RisingStarts starts(buffer.contents(), 0, steps);
    kelcl::RisingMatches matches(bytesOf(buffer), wanted);
    return kelcl::positionOf(
        kelcl::firstAtStart(starts, candidate, [&matches](std::size_t from) { return matches.at(from); }));
}

/// The same up to such a place.
[[gnu::noinline]] unsigned int lastAmong(DBuffer const& buffer, std::size_t candidate,
                                         std::string_view wanted) {
    kelcl::BufferSteps steps;
    kelcl::FallingStarts starts(buffer.contents(), steps);
    kelcl::FallingMatches matches(bytesOf(buffer), wanted);
    return kelcl::positionOf(
        kelcl::lastAtStart(starts, candidate, [&matches](std::size_t from) { return matches.at(from); }));
}

/// Whether what was found among the bytes, or that there is nothing, is the answer.
bool isCertain(DBuffer const& buffer, std::size_t found) {
    return found == notFound || kelcl::surelyBeginsCharacter(buffer.contents(), found);
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
    std::size_t const before = std::max(start, 1U) - 1;
    if (wanted.empty() || before >= buffer.length) return 0;
    std::size_t found = findPattern(bytesOf(buffer).substr(before), wanted);
    if (found != notFound) found += before;
    return isCertain(buffer, found) ? positionOf(found) : firstAmong(buffer, found, wanted);
}

unsigned int lastText(DBuffer const& buffer, unsigned int start, std::string_view wanted) {
    std::size_t const last = std::min(start, buffer.length);
    if (wanted.empty() || last == 0) return 0;
    std::size_t const found = findLastPattern(bytesOf(buffer).substr(0, last - 1 + wanted.size()), wanted);
    return isCertain(buffer, found) ? positionOf(found) : lastAmong(buffer, found, wanted);
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
