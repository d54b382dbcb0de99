// DBuffer: three-way comparison, by bytes or by the locale's collation. Reports of a collation that fails
// name this file, and hosts match on that.
#include "buffers/collation.h"
#include "buffers/wide_mode.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace {

constexpr unsigned long collationLine = 247; // hosts match on it

/// The first `length` bytes of a text, which are not none, ending in a NUL: the text itself where the last of
/// them is one, else a copy.
class Terminated {
public:
    Terminated(char const* text, std::size_t length) : text_(text) {
        if (text[length - 1] == '\0') return;
        copy_.reset(new (std::nothrow) char[length + 1]);
        if (copy_ != nullptr) {
            std::memcpy(copy_.get(), text, length);
            copy_[length] = '\0';
        }
        text_ = copy_.get();
    }
    char const* text() const { return text_; } ///< Null when there was no memory for the copy.

private:
    std::unique_ptr<char[]> copy_;
    char const* text_;
};

std::size_t countNuls(char const* text, std::size_t from, std::size_t end) {
    return static_cast<std::size_t>(std::find_if(text + from, text + end, [](char c) { return c != '\0'; }) -
                                    (text + from));
}

/// Collates the first `length` bytes of both texts, one NUL-free segment after the other. NULs count as the
/// lowest bytes, but unevenly: more NULs on the left sort it before in front of the first segment, and leave
/// the texts equal after an equal segment. Callers rely on it.
int collateSegments(char const* leftText, char const* rightText, std::size_t length) {
    Terminated const left(leftText, length);
    Terminated const right(rightText, length);
    if (left.text() == nullptr || right.text() == nullptr) return -1;
    int result = -1;
    for (std::size_t at = 0; at < length;) {
        std::size_t const leftNuls = countNuls(left.text(), at, length);
        std::size_t const rightNuls = countNuls(right.text(), at, length);
        if (leftNuls != rightNuls) return leftNuls < rightNuls ? 1 : result;
        at += leftNuls;
        if (at >= length) return 0;
        errno = 0;
        result = kelcl::collateBytes(left.text() + at, right.text() + at);
        if (errno != 0) kelcl::raiseCollationError("strcoll", errno, {"dbuffer2", nullptr, collationLine});
        if (result != 0) return result;
        at += std::strlen(left.text() + at) + 1;
    }
    return result;
}

} // namespace

int DBuffer::compare(void const* other, unsigned int otherLength) const {
    using kelcl::after, kelcl::before, kelcl::equal;
    if (other == nullptr) return after;
    if (other == contents() && otherLength == length) return equal;
    if (length == 0) return otherLength > 0 ? before : equal;
    if (otherLength == 0) return after;
    std::size_t const common = std::min(length, otherLength);
    int const result = kelcl::isWideMode()
                           ? collateSegments(contents(), static_cast<char const*>(other), common)
                           : std::memcmp(contents(), other, common);
    if (result != 0) return result < 0 ? before : after;
    return kelcl::orderOfLengths(length, otherLength);
}
