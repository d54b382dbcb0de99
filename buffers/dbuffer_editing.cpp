// DBuffer: editing. Each operation decides what changes and which buffer is written to; the kernels do the
// bytes.
#include "buffers/buffer_block.h"
#include "buffers/gap_list.h"
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "buffers/occurrences.h"
#include "buffers/strip.h"
#include "buffers/virtual_answers.h"
#include "bytes/byte_copy.h"
#include "bytes/byte_edit.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/byte_walk.h"
#include "characters/character_classes.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <iterator>
#include <string>
#include <string_view>

namespace {

using kelcl::bytesOf;
using kelcl::GapList;
using kelcl::shared;
using kelcl::sharedEmpty;

/// Edits bytes without a change of length, from offset `first` on: in place when nobody else can see the
/// buffer, else on the way into a new one. `kernel(out, in, n)` is given the bytes; `out` is `in` when it
/// works in place.
template <class Kernel>
DBuffer* editBytes(DBuffer& buffer, std::size_t first, Kernel kernel) {
    char* const text = buffer.contents();
    if (buffer.hasOneOwner()) {
        kernel(text + first, text + first, buffer.length - first);
        return shared(buffer);
    }
    // A few bytes that do not change are faster edited than copied apart.
    constexpr std::size_t worthCopying = 64;
    if (first < worthCopying) first = 0;
    DBuffer* const copy = kelcl::allocateLike(buffer, buffer.length);
    kelcl::copyBytes(copy->contents(), text, first);
    kernel(copy->contents() + first, text + first, buffer.length - first);
    return copy;
}

/// The same for the letters that `find` finds, of which there may be none.
template <class Find, class Kernel>
DBuffer* editLetters(DBuffer& buffer, Find find, Kernel kernel) {
    constexpr std::size_t worthSearching = 1024; // a shorter text is edited in place as fast
    if (buffer.length < worthSearching && buffer.hasOneOwner()) return editBytes(buffer, 0, kernel);
    std::size_t const first = find(bytesOf(buffer));
    return first == kelcl::notFound ? shared(buffer) : editBytes(buffer, first, kernel);
}

/// The occurrences of a byte as GapList tells those of a pattern, found anew each time: that is faster than
/// to keep them.
class ByteGaps {
public:
    ByteGaps(std::string_view text, char byte, unsigned int start, unsigned int maxCount)
        : text_(text), byte_(byte), from_(std::max(start, 1U) - 1) {
        if (from_ >= text.size()) return;
        count_ = static_cast<unsigned int>(
            std::min<std::size_t>(kelcl::countByte(text.substr(from_), byte), maxCount));
    }

    unsigned int count() const { return count_; }

    template <class Visit>
    void forEach(Visit visit) const {
        // Batches keep the walk and what is done with the gaps out of each other's way.
        unsigned int batch[64];
        kelcl::OccurrencesOf walk(byte_, text_, from_);
        std::size_t end = 0; // of the one before
        for (unsigned int left = count_; left != 0;) {
            unsigned int const size = std::min<unsigned int>(left, std::size(batch));
            for (unsigned int i = 0; i < size; ++i) {
                std::size_t const at = walk.next();
                batch[i] = static_cast<unsigned int>(at - end);
                end = at + 1;
            }
            for (unsigned int i = 0; i < size; ++i)
                visit(batch[i]);
            left -= size;
        }
    }

private:
    std::string_view text_;
    char byte_;
    std::size_t from_;
    unsigned int count_ = 0;
};

void findOccurrences(GapList& found, DBuffer const& text, std::string_view pattern, unsigned int start,
                     unsigned int maxCount) {
    auto const patternLength = static_cast<unsigned int>(pattern.size());
    kelcl::Occurrences occurrences(text, pattern, start);
    unsigned int end = 1; // of the one before
    occurrences.forEach(maxCount, [&](unsigned int position) {
        found.add(position - end);
        end = position + patternLength;
    });
}

template <class Gaps>
DBuffer* changeSameLength(DBuffer& buffer, Gaps const& found, char const* replacement, unsigned int length) {
    std::string copy; // a replacement that is part of the text must not change while it is written
    if (buffer.hasOneOwner() && kelcl::pointsInto(buffer, replacement)) {
        copy = std::string(replacement, length);
        replacement = copy.data();
    }
    return editBytes(buffer, 0, [&](char* out, char const* in, std::size_t n) {
        if (out != in) kelcl::copyBytes(out, in, n);
        found.forEach([&](unsigned int gap) {
            std::memcpy(out + gap, replacement, length);
            out += gap + length;
        });
    });
}

/// The length of a text in which `count` pieces of `oldLength` bytes give way to others of `newLength`.
unsigned int changedLength(unsigned int length, unsigned int count, unsigned int oldLength,
                           unsigned int newLength) {
    unsigned int const difference = oldLength > newLength ? oldLength - newLength : newLength - oldLength;
    if (difference >= kelcl::unboundedLength / count) kelcl::raiseLengthOverflow();
    if (oldLength > newLength) return length - difference * count;
    return kelcl::lengthSum(length, difference * count);
}

/// Writes a text piece by piece.
class Writer {
public:
    explicit Writer(DBuffer& result) : out_(result.contents()), end_(out_ + result.length) {}

    /// From where the piece begins `readable` bytes may be read.
    void write(std::string_view piece, std::size_t readable) {
        // Most pieces are short: what is copied too much, the next ones overwrite.
        constexpr std::size_t atOnce = 16;
        if (piece.size() <= atOnce && readable >= atOnce && end_ - out_ >= std::ptrdiff_t{atOnce})
            std::memcpy(out_, piece.data(), atOnce);
        else if (!piece.empty())
            kelcl::copyBytes(out_, piece.data(), piece.size());
        out_ += piece.size();
    }

private:
    char* out_;
    char* end_;
};

template <class Gaps>
DBuffer* changeOtherLength(DBuffer& buffer, Gaps const& found, unsigned int patternLength,
                           std::string_view replacement) {
    unsigned int const newLength = changedLength(buffer.length, found.count(), patternLength,
                                                 static_cast<unsigned int>(replacement.size()));
    if (newLength == 0) return sharedEmpty(buffer);
    DBuffer* const result = kelcl::allocateLike(buffer, newLength);
    Writer writer(*result);
    std::string_view rest = bytesOf(buffer);
    found.forEach([&](unsigned int gap) {
        writer.write(rest.substr(0, gap), rest.size());
        writer.write(replacement, replacement.size());
        rest.remove_prefix(std::size_t{gap} + patternLength);
    });
    writer.write(rest, rest.size());
    return result;
}

template <class Gaps>
DBuffer* changeFound(DBuffer& buffer, Gaps const& found, unsigned int patternLength,
                     std::string_view replacement) {
    if (found.count() == 0) return shared(buffer);
    if (patternLength == replacement.size())
        return changeSameLength(buffer, found, replacement.data(), patternLength);
    return changeOtherLength(buffer, found, patternLength, replacement);
}

} // namespace

DBuffer* DBuffer::upperCase() {
    if (!kelcl::isLibraryClass(*this))
        return kelcl::editFound(*this, "abcdefghijklmnopqrstuvwxyz",
                                [](char& c, unsigned int) { c = static_cast<char>(c - 32); });
    return editLetters(*this, kelcl::findLowerCase, kelcl::copyUpperCase);
}

DBuffer* DBuffer::lowerCase() {
    if (!kelcl::isLibraryClass(*this))
        return kelcl::editFound(*this, "ABCDEFGHIJKLMNOPQRSTUVWXYZ",
                                [](char& c, unsigned int) { c = static_cast<char>(c + 32); });
    return editLetters(*this, kelcl::findUpperCase, kelcl::copyLowerCase);
}

DBuffer* DBuffer::translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                            unsigned int outputLength, char padCharacter) {
    std::string_view const from(inputSet, inputLength);
    kelcl::Replacements const replacements(from, {outputSet, outputLength}, padCharacter, length);
    if (!kelcl::isLibraryClass(*this))
        return kelcl::editFound(*this, from,
                                [&replacements](char& c, unsigned int) { c = replacements.of(c); });
    std::size_t const first = replacements.findFirst(bytesOf(*this), from);
    if (first == kelcl::notFound) return shared(*this);
    return editBytes(*this, first, [&replacements](char* out, char const* in, std::size_t n) {
        replacements.copy(out, in, n);
    });
}

DBuffer* DBuffer::strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode) {
    return kelcl::stripBytes(
        *this, mode, [&] { return indexOfAnyBut(set, setLength, 1); },
        [&] { return lastIndexOfAnyBut(set, setLength, length); });
}

DBuffer* DBuffer::strip(DStringTest const& test, DStringEnum::StripMode mode) {
    kelcl::CharacterClass const* const known = kelcl::classOf(kelcl::functionOf(test));
    if (known != nullptr && kelcl::isSingleByteClass(*this)) {
        std::string_view const text = bytesOf(*this);
        return kelcl::stripBytes(
            *this, mode, [&] { return kelcl::positionOf(kelcl::findFirstNotIn(text, *known)); },
            [&] { return kelcl::positionOf(kelcl::findLastNotIn(text, *known)); });
    }
    return kelcl::stripBytes(
        *this, mode, [&] { return indexOfAnyBut(test, 1); }, [&] { return lastIndexOfAnyBut(test, length); });
}

DBuffer* DBuffer::reverse() {
    if (length < 2) return shared(*this);
    return editBytes(*this, 0, [](char* out, char const* in, std::size_t n) {
        if (out == in)
            kelcl::reverseInPlace(out, n);
        else
            kelcl::copyReversed(out, in, n);
    });
}

DBuffer* DBuffer::remove(unsigned int start, unsigned int count) {
    if (length == 0 || start > length) return shared(*this);
    unsigned int const before = std::max(start, 1U) - 1;
    unsigned int const removed = std::min(count, length - before);
    char const* const rest = contents() + before + removed;
    return newBuffer(contents(), before, rest, length - before - removed);
}

DBuffer* DBuffer::overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter) {
    if (n == 0 && position <= length) return shared(*this);
    unsigned int const before = std::max(position, 1U) - 1;
    if (before > length) return newBuffer(contents(), length, nullptr, before - length, p, n, padCharacter);
    unsigned int const covered = std::min(n, length - before);
    return newBuffer(contents(), before, p, n, contents() + before + covered, length - before - covered,
                     padCharacter);
}

DBuffer* DBuffer::insert(char const* p, unsigned int n, unsigned int position, char padCharacter) {
    if (n == 0 && position <= length) return shared(*this);
    if (position > length)
        return newBuffer(contents(), length, nullptr, position - length, p, n, padCharacter);
    return newBuffer(contents(), position, p, n, contents() + position, length - position, padCharacter);
}

DBuffer* DBuffer::leftJustify(unsigned int width, char padCharacter) {
    if (width == length) return shared(*this);
    unsigned int const kept = std::min(length, width);
    return newBuffer(contents(), kept, nullptr, width - kept, nullptr, 0, padCharacter);
}

DBuffer* DBuffer::rightJustify(unsigned int width, char padCharacter) {
    if (width == length) return shared(*this);
    unsigned int const kept = std::min(length, width);
    return newBuffer(nullptr, width - kept, contents() + length - kept, kept, nullptr, 0, padCharacter);
}

DBuffer* DBuffer::center(unsigned int width, char padCharacter) {
    if (width == length) return shared(*this);
    if (width < length) return newBuffer(contents() + (length - width) / 2, width);
    unsigned int const left = (width - length) / 2;
    return newBuffer(nullptr, left, contents(), length, nullptr, width - length - left, padCharacter);
}

DBuffer* DBuffer::copy(unsigned int times) {
    if (length == 0 || times == 1) return shared(*this);
    if (times == 0) return sharedEmpty(*this);
    if (times - 1 >= kelcl::unboundedLength / length) overflow();
    unsigned int const total = kelcl::lengthProduct(length, times);
    DBuffer* const result = kelcl::allocateLike(*this, total);
    std::memcpy(result->contents(), contents(), length);
    kelcl::fillRepeating(result->contents(), total, length);
    return result;
}

DBuffer* DBuffer::change(char const* pattern, unsigned int patternLength, char const* replacement,
                         unsigned int replacementLength, unsigned int start, unsigned int maxCount) {
    if (maxCount == 0) return shared(*this);
    std::string_view const newText(replacement, replacementLength);
    if (patternLength == 1 && kelcl::Occurrences::areFoundByBytes(*this, {pattern, 1}))
        return changeFound(*this, ByteGaps(bytesOf(*this), *pattern, start, maxCount), 1, newText);
    GapList found;
    findOccurrences(found, *this, {pattern, patternLength}, start, maxCount);
    return changeFound(*this, found, patternLength, newText);
}
