// The walk from one occurrence to the next.
#include "buffers/occurrences.h"

#include "buffers/buffer_block.h"
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "buffers/wide_mode.h"

#include <algorithm>

namespace kelcl {

Occurrences::Occurrences(DBuffer const& text, std::string_view pattern, unsigned int start)
    : Occurrences(text, pattern, start, areFoundByBytes(text, pattern) ? Way::bytes : Way::search) {}

Occurrences::Occurrences(DBuffer const& text, std::string_view pattern, unsigned int start, Way known)
    : buffer_(text), text_(bytesOf(text)), pattern_(pattern), way_(known), from_(start),
      matches_(text_, pattern_) {
    if (way_ != Way::bytes && !pattern.empty() && (isLibraryClass(text) || hasMultiByteIndexOf(text)))
        way_ = Way::characters;
    if (way_ != Way::search) from_ = std::max(start, 1U);
}

unsigned int Occurrences::atStart(unsigned int from) {
    auto const find = [this](std::size_t offset) {
        return pattern_.size() > 1 ? matches_.at(offset) : findByteFrom(text_, pattern_.front(), offset);
    };
    std::size_t found = find(from - 1);
    if (found == notFound) return 0;
    if (!steps_) {
        steps_.emplace();
        starts_.emplace(text_.data(), 0, *steps_);
        // Where the encoding has the first byte only at the beginning of a character, bytes tell as well.
        if (steps_->standsAlone(pattern_.front())) way_ = Way::bytes;
    }
    if (way_ == Way::characters) found = firstAtStart(*starts_, found, find);
    return found == notFound ? 0 : static_cast<unsigned int>(found) + 1;
}

/// What a host answers may be no place for the pattern, or none that lies ahead: that ends the walk.
unsigned int Occurrences::bySearch(unsigned int from) const {
    auto const bytes = static_cast<unsigned int>(pattern_.size());
    unsigned int const found = buffer_.indexOf(pattern_.data(), bytes, from);
    if (found < std::max(from, 1U) || found > text_.size()) return 0;
    return bytes != 0 && bytes <= text_.size() - found + 1 ? found : 0;
}

unsigned int Occurrences::otherwise(unsigned int from) {
    return way_ == Way::characters ? atStart(from) : bySearch(from);
}

unsigned int Occurrences::count(DBuffer const& text, std::string_view pattern, unsigned int start) {
    if (areFoundByBytes(text, pattern)) {
        if (start > text.length) return 0;
        std::string_view const rest = bytesOf(text).substr(std::max(start, 1U) - 1);
        return static_cast<unsigned int>(pattern.size() == 1 ? countByte(rest, pattern.front())
                                                             : countPattern(rest, pattern));
    }
    Occurrences occurrences(text, pattern, start, Way::search);
    unsigned int count = 0;
    occurrences.forEach(unboundedLength, [&count](unsigned int) { ++count; });
    return count;
}

namespace {

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

/// With the switch on each search would convert all of the text; one of them asks for the same characters.
unsigned int countInOneSearch(DBuffer const& text, DStringTest const& test, unsigned int start) {
    CountingTest const counting(test);
    text.indexOf(counting, start);
    return counting.count();
}

/// A search tests every byte, but begins at what `startFrom` says of the offset after the last one found.
template <class StartFrom>
unsigned int countTestedBytes(std::string_view text, DStringTest const& test, unsigned int start,
                              StartFrom startFrom) {
    unsigned int count = 0;
    std::size_t at = std::max(start, 1U) - 1;
    while (at < text.size()) {
        at = startFrom(at);
        while (at < text.size() && test.test(static_cast<signed char>(text[at])) == 0)
            ++at;
        if (at < text.size()) ++count;
        ++at;
    }
    return count;
}

} // namespace

unsigned int countTested(DBuffer const& text, DStringTest const& test, unsigned int start) {
    if (isSingleByteClass(text))
        return countTestedBytes(bytesOf(text), test, start, [](std::size_t at) { return at; });
    if (isLibraryClass(text) || hasMultiByteTestedIndexOf(text)) {
        if (isWideMode()) return countInOneSearch(text, test, start);
        BufferSteps steps;
        RisingStarts starts(text.contents(), 0, steps);
        return countTestedBytes(bytesOf(text), test, start,
                                [&starts](std::size_t at) { return starts.startFrom(at); });
    }
    unsigned int count = 0;
    for (unsigned int from = start;; ++count) {
        unsigned int const found = text.indexOf(test, from);
        if (found < std::max(from, 1U) || found > text.length) return count; // also if a host's search errs
        from = found + 1;
    }
}

} // namespace kelcl
