// DDBCSBuffer: three-way comparison, by the locale's collation with the switch on. Reports of a collation
// that fails name this file, and hosts match on that.
#include "buffers/collation.h"
#include "buffers/wide_mode.h"
#include "characters/conversion.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cwchar>
#include <memory>
#include <new>

namespace {

constexpr unsigned long collationLine = 812; // hosts match on it

/// One side of a comparison: a text that is taken NUL-free segment by segment, each made wide.
class Side {
public:
    Side(char const* text, unsigned int length)
        : text_(text), length_(length), wide_(new (std::nothrow) wchar_t[std::size_t{length} + 1]) {}

    bool hasMemory() const { return wide_ != nullptr; }
    bool isUsedUp() const { return at_ >= length_; }
    /// Whether all was taken. The NUL that ends a text does not count as taken.
    bool isTakenToItsEnd() const { return at_ > length_; }

    /// Skips NULs and returns how many.
    unsigned int skipNuls() {
        unsigned int const from = at_;
        while (at_ < length_ && text_[at_] == '\0')
            ++at_;
        return at_ - from;
    }

    /// The bytes up to the next NUL or the end, as far as they convert, and moves past that NUL.
    wchar_t const* takeSegment() {
        char const* const segment = text_ + std::min(at_, length_);
        std::size_t const rest = length_ - std::min(at_, length_);
        auto const* const nul =
            static_cast<char const*>(rest == 0 ? nullptr : std::memchr(segment, '\0', rest));
        std::size_t const size = nul != nullptr ? static_cast<std::size_t>(nul - segment) : rest;
        using Outcome = kelcl::UtilitySteps::Outcome;
        kelcl::UtilitySteps steps;
        wchar_t* out = wide_.get();
        for (std::size_t i = 0; i < size; ++out) {
            kelcl::Extent const known = kelcl::widenKnown(out, segment + i, size - i, steps.encoding());
            out += known.characters;
            i += known.bytes;
            if (i == size) break;
            auto const step = steps.at(segment + i, size - i, *out);
            if (step.outcome != Outcome::character && step.outcome != Outcome::twoCharacters) break;
            i += step.bytes;
            if (step.second != 0 && step.bytes > 1) *++out = step.second; // in the place of the second byte
        }
        *out = L'\0';
        at_ += static_cast<unsigned int>(size) + 1;
        return wide_.get();
    }

private:
    char const* text_;
    unsigned int length_;
    unsigned int at_ =
        0; ///< Bytes taken; one more than the length after a last segment without a NUL of its own.
    std::unique_ptr<wchar_t[]> wide_;
};

int collateSegment(wchar_t const* left, wchar_t const* right) {
    errno = 0;
    int const result = kelcl::collateWide(left, right);
    if (errno == EINVAL) {
        errno = 0;
        return std::wcscmp(left, right);
    }
    if (errno != 0) kelcl::raiseCollationError("wcscoll", errno, {"ddbcsb1", nullptr, collationLine});
    return result;
}

enum class Verdict { decided, lengthsDecide, equal };

/// Compares segment by segment. NULs between segments count, but unevenly: a side with fewer of them is less
/// only in front of the first segment. Callers rely on it.
Verdict collateSegments(Side& left, Side& right, int& result) {
    result = 0;
    for (bool isFirst = true;; isFirst = false) {
        unsigned int const leftNuls = left.skipNuls();
        unsigned int const rightNuls = right.skipNuls();
        if (leftNuls != rightNuls) {
            if (leftNuls > rightNuls)
                result = 1;
            else if (isFirst)
                result = -1;
            return result != 0 ? Verdict::decided : Verdict::lengthsDecide;
        }
        if (left.isUsedUp()) return Verdict::lengthsDecide;
        wchar_t const* const leftSegment = left.takeSegment();
        result = collateSegment(leftSegment, right.takeSegment());
        if (result != 0) return Verdict::decided;
        if (left.isUsedUp() || right.isUsedUp())
            return left.isTakenToItsEnd() && right.isTakenToItsEnd() ? Verdict::equal
                                                                     : Verdict::lengthsDecide;
    }
}

} // namespace

int DDBCSBuffer::compare(void const* other, unsigned int otherLength) const {
    if (!kelcl::isWideMode()) return DBuffer::compare(other, otherLength);
    using kelcl::after, kelcl::before, kelcl::equal;
    if (other == nullptr) return after;
    if (other == contents() && otherLength == length) return equal;
    if (length == 0) return otherLength > 0 ? before : equal;
    if (otherLength == 0) return after;

    Side left(contents(), length);
    Side right(static_cast<char const*>(other), otherLength);
    if (!left.hasMemory() || !right.hasMemory()) return before;
    int result = 0;
    switch (collateSegments(left, right, result)) {
    case Verdict::decided:
        return result < 0 ? before : after;
    case Verdict::equal:
        return equal;
    default:
        return kelcl::orderOfLengths(length, otherLength);
    }
}
