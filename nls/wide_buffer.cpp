// DWBuffer: a wide copy of a multi-byte text and the searches in it.
#include <kelcl/dnlsutil.h>

#include "string/length.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <vector>

namespace {

/// The array is owned only once it is filled, so that a failed conversion frees it.
wchar_t* converted(char const* mbs, unsigned int len, unsigned int& length) {
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

bool matchesAt(DWBuffer const& text, unsigned int position, DWBuffer const& pattern) {
    return std::wcsncmp(text.wide + position - 1, pattern.wide, pattern.length) == 0;
}

} // namespace

DWBuffer::DWBuffer(char const* mbs, unsigned int len) : wide(nullptr), length(0) {
    wide = converted(mbs, len, length);
}

DWBuffer::DWBuffer(char const* mbs) : wide(nullptr), length(0) {
    char const* const text = mbs != nullptr ? mbs : "";
    wide = converted(text, kelcl::lengthSum(kelcl::textOf(text).length, 1), length);
    --length; // without the NUL
}

DWBuffer::~DWBuffer() { delete[] wide; }

unsigned int DWBuffer::positionOf(DWBuffer const& pattern, unsigned int start) const {
    if (start == 0 || start > length || pattern.length == 0) return 0;
    for (unsigned int position = start; pattern.length <= length - position + 1; ++position)
        if (matchesAt(*this, position, pattern)) return position;
    return 0;
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
    for (unsigned int position = std::min(start, length - pattern.length + 1); position > 0; --position)
        if (matchesAt(*this, position, pattern)) return position;
    return 0;
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
