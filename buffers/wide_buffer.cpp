// DWBuffer: a wide copy of a multi-byte text and the searches in it.
#include <kelcl/dnlsutil.h>

#include "buffers/length.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <memory>
#include <vector>

namespace {

/// The array is owned only once it is filled, so that a failed conversion frees it.
wchar_t* widened(char const* mbs, unsigned int len, unsigned int& length) {
    std::unique_ptr<wchar_t[]> array(new wchar_t[std::max(len, 1U)]);
    if (len == 0) array[0] = L'\0';
    length = static_cast<unsigned int>(cvtMBS2WCS(mbs, len, array.get()));
    return array.release();
}

/// The first (last) position from `start` on (down) whose character satisfies `wanted`.
template <class Wanted>
unsigned int firstPosition(DWBuffer const& text, unsigned int start, Wanted wanted) {
    if (start == 0 || start > text.length) return 0;
    wchar_t const* const end = text.wide + text.length;
    wchar_t const* const found =
        std::find_if(static_cast<wchar_t const*>(text.wide) + start - 1, end, wanted);
    return found == end ? 0 : static_cast<unsigned int>(found - text.wide) + 1;
}
template <class Wanted>
unsigned int lastPosition(DWBuffer const& text, unsigned int start, Wanted wanted) {
    for (unsigned int position = std::min(start, text.length); position > 0; --position)
        if (wanted(text.wide[position - 1])) return position;
    return 0;
}

/// The members of a set, sorted where looking through all of them for each character would take long.
class Members {
public:
    explicit Members(DWBuffer const& set) : set_(set) {
        constexpr unsigned int fewMembers = 16;
        if (set.length <= fewMembers) return;
        sorted_.assign(set.wide, set.wide + set.length);
        std::sort(sorted_.begin(), sorted_.end());
    }
    bool contains(wchar_t wc) const {
        if (sorted_.empty()) return set_.hasWChar(wc);
        return std::binary_search(sorted_.begin(), sorted_.end(), wc);
    }

private:
    DWBuffer const& set_;
    std::vector<wchar_t> sorted_;
};

/// How much of a pattern is compared: up to a NUL, with it.
std::size_t comparedLength(DWBuffer const& pattern) {
    wchar_t const* const nul = std::wmemchr(pattern.wide, L'\0', pattern.length);
    return nul != nullptr ? static_cast<std::size_t>(nul - pattern.wide) + 1 : pattern.length;
}

/// For each length of a pattern's front but 0, how long a shorter front is that also ends it.
template <class Pattern>
std::vector<std::size_t> bordersOf(Pattern pattern, std::size_t m) {
    std::vector<std::size_t> borders(m);
    for (std::size_t i = 1, matched = 0; i < m; ++i) {
        while (matched > 0 && pattern(i) != pattern(matched))
            matched = borders[matched - 1];
        if (pattern(i) == pattern(matched)) ++matched;
        borders[i] = matched;
    }
    return borders;
}

/// The offset at which a pattern stands first among `n` characters, else `n`. `text(i)` and `pattern(i)` are
/// the characters of the two, which may be read backwards. Linear in both (Knuth, Morris and Pratt).
template <class Text, class Pattern>
std::size_t findLinear(Text text, std::size_t n, Pattern pattern, std::size_t m) {
    std::vector<std::size_t> const borders = bordersOf(pattern, m);
    for (std::size_t i = 0, matched = 0; i < n; ++i) {
        while (matched > 0 && text(i) != pattern(matched))
            matched = borders[matched - 1];
        if (text(i) == pattern(matched)) ++matched;
        if (matched == m) return i + 1 - m;
    }
    return n;
}

} // namespace

DWBuffer::DWBuffer(char const* mbs, unsigned int len) : wide(nullptr), length(0) {
    wide = widened(mbs, len, length);
}

DWBuffer::DWBuffer(char const* mbs) : wide(nullptr), length(0) {
    char const* const text = mbs != nullptr ? mbs : "";
    wide = widened(text, kelcl::lengthSum(kelcl::textOf(text).length, 1), length);
    --length; // without the NUL
}

DWBuffer::~DWBuffer() { delete[] wide; }

unsigned int DWBuffer::positionOf(DWBuffer const& pattern, unsigned int start) const {
    if (start == 0 || start > length || pattern.length == 0) return 0;
    if (pattern.length > length - start + 1) return 0;
    std::size_t const compared = comparedLength(pattern);
    std::size_t const n = length - pattern.length - (start - 1) + compared;
    std::size_t const found = findLinear([text = wide + start - 1](std::size_t i) { return text[i]; }, n,
                                         [&pattern](std::size_t i) { return pattern.wide[i]; }, compared);
    return found == n ? 0 : start + static_cast<unsigned int>(found);
}

unsigned int DWBuffer::positionOfAnyOf(DWBuffer const& set, unsigned int start) const {
    Members const members(set);
    return firstPosition(*this, start, [&members](wchar_t wc) { return members.contains(wc); });
}

unsigned int DWBuffer::positionOfAnyBut(DWBuffer const& set, unsigned int start) const {
    Members const members(set);
    return firstPosition(*this, start, [&members](wchar_t wc) { return !members.contains(wc); });
}

unsigned int DWBuffer::lastPositionOf(DWBuffer const& pattern, unsigned int start) const {
    if (pattern.length == 0 || pattern.length > length) return 0;
    unsigned int const last = std::min(start, length - pattern.length + 1);
    if (last == 0) return 0;
    std::size_t const compared = comparedLength(pattern);
    std::size_t const n = last - 1 + compared;
    std::size_t const found =
        findLinear([text = wide + n - 1](std::size_t i) { return *(text - i); }, n,
                   [end = pattern.wide + compared - 1](std::size_t i) { return *(end - i); }, compared);
    return found == n ? 0 : last - static_cast<unsigned int>(found);
}

unsigned int DWBuffer::lastPositionOfAnyOf(DWBuffer const& set, unsigned int start) const {
    Members const members(set);
    return lastPosition(*this, start, [&members](wchar_t wc) { return members.contains(wc); });
}

unsigned int DWBuffer::lastPositionOfAnyBut(DWBuffer const& set, unsigned int start) const {
    Members const members(set);
    return lastPosition(*this, start, [&members](wchar_t wc) { return !members.contains(wc); });
}

bool DWBuffer::hasWChar(wchar_t wc) const { return std::wmemchr(wide, wc, length) != nullptr; }

void DWBuffer::reverse() const { std::reverse(wide, wide + length); }
