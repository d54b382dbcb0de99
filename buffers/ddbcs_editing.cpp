// DDBCSBuffer: editing, except for case. Each operation chooses between two paths that stand side by side:
// wide characters with the switch on, and bytes with repair of cut characters with it off.
#include "buffers/character_repair.h"
#include "buffers/ddbcs_search.h"
#include "buffers/length.h"
#include "buffers/outside_of_class.h"
#include "buffers/owned_buffer.h"
#include "buffers/strip.h"
#include "buffers/translation.h"
#include "buffers/wide_path.h"
#include "characters/character_classes.h"
#include "characters/character_map.h"
#include "characters/character_text.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace {

using kelcl::bytesOf;
using kelcl::CharacterText;
using kelcl::isWideMode;
using kelcl::shared;
using kelcl::sharedEmpty;

// Strip

/// Strips the characters at the ends whose values do not stay, always into a new buffer. Some ASCII ones may
/// be known as such.
template <class Stays>
DBuffer* stripWide(DBuffer const& buffer, kelcl::CharacterText& text, DStringEnum::StripMode mode,
                   kelcl::ByteSet const* goes, Stays stays) {
    CharacterText::Place first = 0;
    CharacterText::Place last = text.end();
    if (mode != DStringEnum::trailing) {
        first = text.findFirst(0, stays, goes);
        if (first == last) return sharedEmpty(buffer);
    }
    if (mode != DStringEnum::leading) last = text.findLast(last, stays, goes);
    return last <= first ? sharedEmpty(buffer) : kelcl::pieceOf(buffer, text, first, last);
}

bool isAscii(wchar_t value) { return static_cast<std::uint32_t>(value) < 0x80; }

DBuffer* stripWide(DBuffer const& buffer, char const* set, unsigned int setLength,
                   DStringEnum::StripMode mode) {
    bool const isUtf8 = kelcl::isUtf8Locale();
    CharacterText text(bytesOf(buffer), isUtf8);
    text.convert();
    kelcl::ByteSet ascii;
    kelcl::CharacterMap others;
    CharacterText listed({set, setLength}, isUtf8);
    for (CharacterText::Place at = 0; at < listed.end();) {
        wchar_t const value = listed.take(at);
        if (isAscii(value))
            ascii.insert(static_cast<char>(value));
        else
            others.add(kelcl::CharacterMap::keyOf(value));
    }
    return stripWide(buffer, text, mode, &ascii, [&](wchar_t value) {
        return isAscii(value) ? !ascii.contains(static_cast<char>(value))
                              : !others.contains(kelcl::CharacterMap::keyOf(value));
    });
}

DBuffer* stripWide(DBuffer const& buffer, DStringTest const& test, DStringEnum::StripMode mode) {
    kelcl::CharacterClass const* const known = kelcl::classOf(kelcl::functionOf(test));
    CharacterText text(bytesOf(buffer));
    return stripWide(buffer, text, mode, known != nullptr ? &known->ascii : nullptr,
                     [&test](wchar_t value) { return test.test(static_cast<int>(value)) == 0; });
}

/// The last byte of the character that starts at `start`, which may be 0.
unsigned int endOfCharacter(DBuffer const& buffer, unsigned int start) {
    unsigned int end = start;
    kelcl::PlacesInCharacters places(buffer);
    while (end != 0 && end < buffer.length && places.at(end + 1) > 1)
        ++end;
    return end;
}

// Reverse

DBuffer* reverseCharacters(DBuffer const& buffer, CharacterText& text) {
    return kelcl::written(buffer, text.roomForAll(), [&text](char* out) { return text.writeReversed(out); });
}

DBuffer* reverseBytes(DBuffer const& buffer) {
    DBuffer* const result = kelcl::allocateLike(buffer, buffer.length);
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

/// Over plain text: the bytes, with pads for what is left of cut characters.
DBuffer* overlayPlain(DBuffer const& buffer, CharacterText const& text, char const* p, unsigned int n,
                      unsigned int position, char padCharacter) {
    unsigned int const before = position - 1;
    unsigned int const next = before + std::min(n, buffer.length - before);
    DBuffer* const result = buffer.newBuffer(buffer.contents(), before, p, n, buffer.contents() + next,
                                             buffer.length - next, ' ');
    std::size_t const head = text.before(position);
    if (head != before) std::memset(result->contents() + head, padCharacter, before - head);
    std::size_t const rest = text.firstFrom(next + 1).value_or(buffer.length);
    if (rest != next) std::memset(result->contents() + before + n, padCharacter, rest - next);
    return result;
}

DBuffer* overlayWide(DBuffer const& buffer, char const* p, unsigned int n, unsigned int position,
                     char padCharacter) {
    unsigned int const before = position - 1;
    if (position > buffer.length)
        return buffer.newBuffer(buffer.contents(), buffer.length, nullptr, before - buffer.length, p, n,
                                padCharacter);
    unsigned int const covered = std::min(n, buffer.length - before);
    std::size_t const front = std::size_t{before} + n;
    CharacterText const text(bytesOf(buffer));
    if (text.isPlain()) return overlayPlain(buffer, text, p, n, position, padCharacter);
    kelcl::Room const rest =
        covered == buffer.length - before ? kelcl::Room{0, true} : text.roomForRest(position + n);
    return kelcl::written(buffer, {front + rest.bytes, rest.isExact}, [&](char* out) {
        if (before != 0) text.writePiece(1, before, padCharacter, out);
        if (p != nullptr)
            std::memcpy(out + before, p, n);
        else
            std::memset(out + before, ' ', n);
        return front + (rest.bytes == 0 ? 0 : text.writeRest(position + n, padCharacter, out + front));
    });
}

DBuffer* overlayBytes(DBuffer& buffer, kelcl::OwnedBuffer result, unsigned int n, unsigned int position,
                      char padCharacter) {
    // The head of a cut character turns into blanks, its tail into pad characters: callers rely on it.
    kelcl::CharacterRepair repair(buffer, *result);
    repair.blankHead(position, position - 1, ' ');
    if (position <= buffer.length && n <= buffer.length - position)
        repair.blankTail(position + n, position + n, padCharacter);
    return result.release();
}

// Insert

DBuffer* insertWide(DBuffer const& buffer, char const* p, unsigned int n, unsigned int position,
                    char padCharacter) {
    unsigned int const total = kelcl::lengthSum(buffer.length, n);
    if (total >= kelcl::lengthLimit) kelcl::raiseLengthOverflow();
    bool const isUtf8 = kelcl::isUtf8Locale();
    CharacterText text(bytesOf(buffer), isUtf8);
    CharacterText inserted({p, n}, isUtf8);
    if (text.isPlain() && inserted.isPlain()) {
        auto const front = static_cast<unsigned int>(text.after(position));
        return buffer.newBuffer(buffer.contents(), front, p, n, buffer.contents() + front,
                                buffer.length - front);
    }
    CharacterText::Place const end = text.end();
    CharacterText::Place const front = std::min(text.after(position), end);
    return kelcl::fitted(buffer, total, {{text, 0, front}, {inserted, 0, inserted.end()}, {text, front, end}},
                         padCharacter);
}

/// A position inside a character moves in front of it.
unsigned int insertPosition(DBuffer const& buffer, unsigned int position) {
    kelcl::PlacesInCharacters places(buffer);
    while (position > 0 && position < buffer.length && places.at(position + 1) >= 2)
        --position;
    return position;
}

// Center

DBuffer* cutMiddleWide(DBuffer const& buffer, unsigned int width, char padCharacter) {
    CharacterText text(bytesOf(buffer));
    CharacterText::Place const first = text.before((buffer.length - width) / 2 + 1);
    // Up to but not including the last character: callers rely on it.
    CharacterText::Place const last = text.end() == 0 ? 0 : text.previous(text.end());
    return kelcl::fitted(buffer, width, {{text, std::min(first, last), last}}, padCharacter);
}

DBuffer* cutMiddleBytes(DBuffer const& buffer, unsigned int width, char padCharacter) {
    unsigned int const surplus = buffer.length - width;
    unsigned int start = surplus / 2 + 1;
    kelcl::PlacesInCharacters places(buffer);
    while (surplus > 1 && start > 1 && places.at(start) >= 2)
        --start;
    kelcl::OwnedBuffer result(buffer.newBuffer(buffer.contents() + start - 1, width));
    kelcl::CharacterRepair(buffer, *result).blankHead(start + width, width, padCharacter);
    return result.release();
}

} // namespace

DBuffer* DDBCSBuffer::translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                                unsigned int outputLength, char padCharacter) {
    auto const translate = isWideMode() ? kelcl::translateWide : kelcl::translateBytes;
    return translate(*this, {inputSet, inputLength}, {outputSet, outputLength}, padCharacter);
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
    kelcl::CharacterClass const* const known = kelcl::searchableClass(test);
    if (known != nullptr && kelcl::isMultiByteClass(*this)) {
        kelcl::OutsideOfClass outside(*this, *known);
        return kelcl::stripBytes(
            *this, mode, [&] { return kelcl::positionOf(outside.first(0)); },
            [&] { return endOfCharacter(*this, kelcl::positionOf(outside.last(length))); });
    }
    return kelcl::stripBytes(
        *this, mode, [&] { return indexOfAnyBut(test, 1); },
        [&] { return endOfCharacter(*this, lastIndexOfAnyBut(test, length)); });
}

DBuffer* DDBCSBuffer::reverse() {
    if (length < 2) return shared(*this);
    CharacterText text(bytesOf(*this));
    return isWideMode() || text.isPlain() ? reverseCharacters(*this, text) : reverseBytes(*this);
}

DBuffer* DDBCSBuffer::remove(unsigned int start, unsigned int count) {
    if (length == 0 || start > length) return shared(*this);
    unsigned int const first = std::max(start, 1U);
    unsigned int const next = first + std::min(count, length - first + 1);
    kelcl::OwnedBuffer result(DBuffer::remove(first, count));
    kelcl::CharacterRepair repair(*this, *result);
    repair.blankHead(first, first - 1, ' ');
    repair.blankTail(next, first, ' ');
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
        CharacterText text(bytesOf(*this));
        if (!text.isPlain()) return kelcl::fitted(*this, width, {{text, 0, text.end()}}, padCharacter);
        auto const whole = static_cast<unsigned int>(text.before(width + 1));
        return newBuffer(contents(), whole, nullptr, width - whole, nullptr, 0, padCharacter);
    }
    kelcl::OwnedBuffer result(DBuffer::leftJustify(width, padCharacter));
    kelcl::CharacterRepair(*this, *result).blankHead(width + 1, width, padCharacter);
    return result.release();
}

DBuffer* DDBCSBuffer::rightJustify(unsigned int width, char padCharacter) {
    kelcl::OwnedBuffer result(DBuffer::rightJustify(width, padCharacter));
    if (width < length && width != 0)
        kelcl::CharacterRepair(*this, *result).blankTail(length - width + 1, 1, padCharacter);
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
