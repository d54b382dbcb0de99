// DDBCSBuffer: editing, except for case. Each operation chooses between two paths that stand side by side:
// wide characters with the switch on, and bytes with repair of cut characters with it off.
#include "buffers/buffer_factory.h"
#include "buffers/character_repair.h"
#include "buffers/length.h"
#include "buffers/owned_buffer.h"
#include "buffers/strip.h"
#include "buffers/translation.h"
#include "buffers/wide_path.h"
#include "characters/conversion.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace {

using kelcl::isPlainUtf8;
using kelcl::isWideMode;
using kelcl::narrowed;
using kelcl::narrowedTo;
using kelcl::shared;
using kelcl::sharedEmpty;

// Strip

/// Strips characters at the ends: `findFirst` and `findLast` give the first and the last of `count` positions
/// that stay, 0 for none, and `piece(first, last)` what lies between, always in a new buffer.
template <class FindFirst, class FindLast, class Piece>
DBuffer* stripWide(DBuffer const& buffer, unsigned int count, DStringEnum::StripMode mode,
                   FindFirst findFirst, FindLast findLast, Piece piece) {
    unsigned int first = 1;
    unsigned int last = count;
    if (mode != DStringEnum::trailing) {
        first = findFirst();
        if (first == 0) return sharedEmpty(buffer);
    }
    if (mode != DStringEnum::leading) last = findLast();
    return last < first ? sharedEmpty(buffer) : piece(first, last);
}

/// The last byte of the character that starts at `start`, which may be 0.
unsigned int endOfCharacter(DBuffer const& buffer, unsigned int start) {
    unsigned int end = start;
    while (end != 0 && end < buffer.length && buffer.charType(end + 1) > 1)
        ++end;
    return end;
}

auto pieceOf(DBuffer const& buffer, DWBuffer const& text) {
    return [&](unsigned int first, unsigned int last) {
        return narrowed(buffer, text.wide + first - 1, last - first + 1);
    };
}

DBuffer* stripWide(DBuffer const& buffer, char const* set, unsigned int setLength,
                   DStringEnum::StripMode mode) {
    // The searches go by bytes there. A class that a host derived could answer them in its own way.
    if (kelcl::isOfLibraryClass(buffer) && isPlainUtf8(buffer) && kelcl::isPlainUtf8Text(set, setLength))
        return stripWide(
            buffer, buffer.length, mode, [&] { return buffer.indexOfAnyBut(set, setLength, 1); },
            [&] { return endOfCharacter(buffer, buffer.lastIndexOfAnyBut(set, setLength, buffer.length)); },
            [&](unsigned int first, unsigned int last) {
                return buffer.newBuffer(buffer.contents() + first - 1, last - first + 1);
            });
    DWBuffer const text(buffer.contents(), buffer.length);
    DWBuffer const members(set, setLength);
    return stripWide(
        buffer, text.length, mode, [&] { return text.positionOfAnyBut(members, 1); },
        [&] { return text.lastPositionOfAnyBut(members, text.length); }, pieceOf(buffer, text));
}

DBuffer* stripWide(DBuffer const& buffer, DStringTest const& test, DStringEnum::StripMode mode) {
    DWBuffer const text(buffer.contents(), buffer.length);
    auto const stays = [&test](wchar_t c) { return test.test(static_cast<int>(c)) == 0; };
    auto const findFirst = [&] {
        wchar_t const* const end = text.wide + text.length;
        wchar_t const* const found = std::find_if(static_cast<wchar_t const*>(text.wide), end, stays);
        return found == end ? 0 : static_cast<unsigned int>(found - text.wide) + 1;
    };
    auto const findLast = [&] {
        unsigned int last = text.length;
        while (last > 0 && !stays(text.wide[last - 1]))
            --last;
        return last;
    };
    return stripWide(buffer, text.length, mode, findFirst, findLast, pieceOf(buffer, text));
}

// Reverse

DBuffer* reverseWide(DBuffer const& buffer) {
    DWBuffer const wide(buffer.contents(), buffer.length);
    wide.reverse();
    return narrowed(buffer, wide.wide, wide.length);
}

DBuffer* reverseBytes(DBuffer const& buffer) {
    DBuffer* const result = kelcl::allocateLike(buffer, buffer.length);
    if (isPlainUtf8(buffer)) {
        kelcl::reverseUtf8(result->contents(), buffer.contents(), buffer.length);
        return result;
    }
    char* out = result->contents() + buffer.length;
    kelcl::BufferSteps steps;
    for (std::size_t at = 0; at < buffer.length;) {
        std::size_t const bytes =
            std::min<std::size_t>(steps.length(buffer.contents() + at), buffer.length - at);
        out -= bytes;
        std::memcpy(out, buffer.contents() + at, bytes);
        at += bytes;
    }
    return result;
}

// Overlay

DBuffer* overlayWide(DBuffer const& buffer, char const* p, unsigned int n, unsigned int position,
                     char padCharacter) {
    unsigned int const before = position - 1;
    if (position > buffer.length)
        return buffer.newBuffer(buffer.contents(), buffer.length, nullptr, before - buffer.length, p, n,
                                padCharacter);
    std::unique_ptr<char[]> const head(new char[before]);
    getSubString(buffer.contents(), buffer.length, 1, padCharacter, head.get(), before);
    unsigned int const covered = std::min(n, buffer.length - before);
    unsigned int const rest = buffer.length - before - covered;
    std::unique_ptr<char[]> const tail(new char[2 * std::size_t{rest}]);
    unsigned int const tailLength =
        rest == 0 ? 0
                  : getRemainString(buffer.contents(), buffer.length, position + n, padCharacter, tail.get());
    return buffer.newBuffer(head.get(), before, p, n, tail.get(), tailLength);
}

DBuffer* overlayBytes(DBuffer& buffer, kelcl::OwnedBuffer result, unsigned int n, unsigned int position,
                      char padCharacter) {
    // The head of a cut character turns into blanks, its tail into pad characters: callers rely on it.
    kelcl::blankCutHead(buffer, position, *result, position - 1, ' ');
    if (position <= buffer.length && n <= buffer.length - position)
        kelcl::blankCutTail(buffer, position + n, *result, position + n, padCharacter);
    return result.release();
}

// Insert

DBuffer* insertWide(DBuffer const& buffer, char const* p, unsigned int n, unsigned int position,
                    char padCharacter) {
    unsigned int const total = kelcl::lengthSum(buffer.length, n);
    if (total >= kelcl::lengthLimit) kelcl::raiseLengthOverflow();
    unsigned int const before = findCharNum(buffer.contents(), buffer.length, position);
    if (isPlainUtf8(buffer) && kelcl::isPlainUtf8Text(p, n)) {
        unsigned int end = before == 0 ? 0 : position;
        while (end != 0 && end < buffer.length && kelcl::isContinuation(buffer.contents()[end]))
            ++end;
        return buffer.newBuffer(buffer.contents(), end, p, n, buffer.contents() + end, buffer.length - end);
    }
    DWBuffer const text(buffer.contents(), buffer.length);
    DWBuffer const inserted(p, n);
    unsigned int const front = std::min(before, text.length);
    std::unique_ptr<wchar_t[]> const joined(new wchar_t[std::size_t{text.length} + inserted.length]);
    wchar_t* out = std::copy_n(text.wide, front, joined.get());
    out = std::copy_n(inserted.wide, inserted.length, out);
    out = std::copy(text.wide + front, text.wide + text.length, out);
    auto const count = static_cast<unsigned int>(out - joined.get());
    return narrowedTo(buffer, total, joined.get(), count, padCharacter);
}

/// A position inside a character moves in front of it.
unsigned int insertPosition(DBuffer const& buffer, unsigned int position) {
    while (position > 0 && position < buffer.length && buffer.charType(position + 1) >= 2)
        --position;
    return position;
}

// Center

DBuffer* cutMiddleWide(DBuffer const& buffer, unsigned int width, char padCharacter) {
    unsigned int const first = findCharNum(buffer.contents(), buffer.length, (buffer.length - width) / 2 + 1);
    DWBuffer const text(buffer.contents(), buffer.length);
    unsigned int const skipped = first == 0 ? 0 : first - 1;
    // Up to but not including the last character: callers rely on it.
    unsigned int const count = text.length > skipped ? text.length - skipped - 1 : 0;
    return narrowedTo(buffer, width, text.wide + skipped, count, padCharacter);
}

DBuffer* cutMiddleBytes(DBuffer const& buffer, unsigned int width, char padCharacter) {
    unsigned int const surplus = buffer.length - width;
    unsigned int start = surplus / 2 + 1;
    while (surplus > 1 && start > 1 && buffer.charType(start) >= 2)
        --start;
    kelcl::OwnedBuffer result(buffer.newBuffer(buffer.contents() + start - 1, width));
    kelcl::blankCutHead(buffer, start + width, *result, width, padCharacter);
    return result.release();
}

} // namespace

DBuffer* DDBCSBuffer::translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                                unsigned int outputLength, char padCharacter) {
    if (isWideMode()) {
        DWBuffer const text(contents(), length);
        kelcl::WideTranslation const table(inputSet, inputLength, outputSet, outputLength, padCharacter);
        std::transform(text.wide, text.wide + text.length, text.wide,
                       [&table](wchar_t c) { return table.of(c); });
        return narrowed(*this, text.wide, text.length);
    }
    return kelcl::ByteTranslation(inputSet, inputLength, outputSet, outputLength, padCharacter).of(*this);
}

DBuffer* DDBCSBuffer::strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode) {
    if (length == 0) return shared(*this);
    if (isWideMode()) return stripWide(*this, set, setLength, mode);
    return kelcl::stripBytes(
        *this, mode, [&] { return indexOfAnyBut(set, setLength, 1); },
        [&] { return endOfCharacter(*this, lastIndexOfAnyBut(set, setLength, length)); });
}

DBuffer* DDBCSBuffer::strip(DStringTest const& test, DStringEnum::StripMode mode) {
    if (length == 0) return shared(*this);
    if (isWideMode()) return stripWide(*this, test, mode);
    return kelcl::stripBytes(
        *this, mode, [&] { return indexOfAnyBut(test, 1); },
        [&] { return endOfCharacter(*this, lastIndexOfAnyBut(test, length)); });
}

DBuffer* DDBCSBuffer::reverse() {
    if (length < 2) return shared(*this);
    return isWideMode() && !isPlainUtf8(*this) ? reverseWide(*this) : reverseBytes(*this);
}

DBuffer* DDBCSBuffer::remove(unsigned int start, unsigned int count) {
    if (length == 0 || start > length) return shared(*this);
    unsigned int const first = std::max(start, 1U);
    unsigned int const behind = first + std::min(count, length - first + 1);
    kelcl::OwnedBuffer result(DBuffer::remove(first, count));
    kelcl::blankCutHead(*this, first, *result, first - 1, ' ');
    kelcl::blankCutTail(*this, behind, *result, first, ' ');
    return result.release();
}

DBuffer* DDBCSBuffer::overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter) {
    if (n == 0 && position <= length) return shared(*this);
    unsigned int const first = std::max(position, 1U);
    if (isWideMode()) return overlayWide(*this, p, n, first, padCharacter);
    kelcl::OwnedBuffer overlaid(DBuffer::overlayWith(p, n, first, padCharacter));
    return overlayBytes(*this, std::move(overlaid), n, first, padCharacter);
}

DBuffer* DDBCSBuffer::leftJustify(unsigned int width, char padCharacter) {
    if (width >= length) return DBuffer::leftJustify(width, padCharacter);
    if (isWideMode()) {
        DWBuffer const text(contents(), length);
        return narrowedTo(*this, width, text.wide, text.length, padCharacter);
    }
    kelcl::OwnedBuffer result(DBuffer::leftJustify(width, padCharacter));
    kelcl::blankCutHead(*this, width + 1, *result, width, padCharacter);
    return result.release();
}

DBuffer* DDBCSBuffer::rightJustify(unsigned int width, char padCharacter) {
    kelcl::OwnedBuffer result(DBuffer::rightJustify(width, padCharacter));
    if (width < length && width != 0)
        kelcl::blankCutTail(*this, length - width + 1, *result, 1, padCharacter);
    return result.release();
}

DBuffer* DDBCSBuffer::insert(char const* p, unsigned int n, unsigned int position, char padCharacter) {
    if ((n == 0 && position <= length) || position > length)
        return DBuffer::insert(p, n, position, padCharacter);
    if (isWideMode()) return insertWide(*this, p, n, position, padCharacter);
    return DBuffer::insert(p, n, insertPosition(*this, position), padCharacter);
}

DBuffer* DDBCSBuffer::center(unsigned int width, char padCharacter) {
    if (width >= length) return DBuffer::center(width, padCharacter);
    return isWideMode() ? cutMiddleWide(*this, width, padCharacter)
                        : cutMiddleBytes(*this, width, padCharacter);
}

DBuffer* DDBCSBuffer::change(char const* pattern, unsigned int patternLength, char const* replacement,
                             unsigned int replacementLength, unsigned int start, unsigned int maxCount) {
    return DBuffer::change(pattern, patternLength, replacement, replacementLength, start, maxCount);
}
