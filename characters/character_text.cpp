// A text as a row of characters: places, pieces, and the way to wide characters and back.
#include "characters/character_text.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstring>
#include <utility>

namespace kelcl {

namespace {

unsigned int length(std::string_view text) { return static_cast<unsigned int>(text.size()); }

/// Back from a place in plain text to the start of its character, or on to the next start.
std::size_t startAtOrBefore(std::string_view text, std::size_t at) {
    while (at < text.size() && isContinuation(text[at]))
        --at;
    return at;
}
std::size_t startAtOrAfter(std::string_view text, std::size_t at) {
    while (at < text.size() && isContinuation(text[at]))
        ++at;
    return at;
}

/// Mostly there is nothing to pad, and a call would be noticeable.
void pad(char* out, std::size_t count, char padChar) {
    if (count != 0) std::memset(out, padChar, count);
}

} // namespace

void CharacterText::convertAll() {
    auto wide = std::make_unique_for_overwrite<wchar_t[]>(std::max<std::size_t>(text_.size(), 1));
    count_ = cvtMBS2WCS(text_.data(), length(text_), wide.get());
    wide_ = std::move(wide);
}

CharacterText::Place CharacterText::before(unsigned int position) const {
    if (position == 0 || position > text_.size()) return 0;
    if (isPlain_) return startAtOrBefore(text_, position - 1);
    unsigned int const number = findCharNum(text_.data(), length(text_), position);
    return number == 0 ? 0 : number - 1;
}

CharacterText::Place CharacterText::after(unsigned int position) const {
    if (position == 0 || position > text_.size()) return 0;
    return isPlain_ ? startAtOrAfter(text_, position) : findCharNum(text_.data(), length(text_), position);
}

std::optional<CharacterText::Place> CharacterText::firstFrom(unsigned int position) const {
    if (position == 0 || position > text_.size()) return std::nullopt;
    if (isPlain_) {
        Place const start = startAtOrAfter(text_, position - 1);
        return start == text_.size() ? std::nullopt : std::optional(start);
    }
    unsigned int const number = findNextCharNum(text_.data(), length(text_), position);
    return number == 0 ? std::nullopt : std::optional<Place>(number - 1);
}

unsigned int CharacterText::position(Place place) const {
    auto const number = static_cast<unsigned int>(place) + 1;
    return isPlain_ ? number : findBytePos(text_.data(), length(text_), number);
}

CharacterText::Place CharacterText::firstNotIn(ByteSet const& set, Place from) const {
    std::size_t const found = findFirstNotIn(text_.substr(from), set);
    return found == notFound ? text_.size() : from + found;
}

CharacterText::Place CharacterText::lastNotIn(ByteSet const& set, Place to) const {
    std::size_t const found = findLastNotIn(text_.substr(0, to), set);
    return found == notFound ? 0 : found + 1;
}

std::size_t CharacterText::write(Place from, Place to, char* out) {
    return writeWhole(from, to, out, roomFor(from, to).bytes);
}

std::size_t CharacterText::writeWhole(Place& from, Place to, char* out, std::size_t room) {
    convert();
    if (!isPlain_) {
        Extent const written = narrowWhole(out, room, wide_.get() + from, to - from);
        from += written.characters;
        return written.bytes;
    }
    std::size_t const fitting = to - from <= room ? to - from : startAtOrBefore(text_, from + room) - from;
    if (fitting != 0) std::memcpy(out, text_.data() + from, fitting);
    from += fitting;
    return fitting;
}

std::size_t CharacterText::writeWideReversed(char* out) {
    convert();
    std::reverse(wide_.get(), wide_.get() + count_);
    return write(0, count_, out);
}

/// The offset of the first character that starts at or after byte `start`, or notFound.
std::size_t CharacterText::startOfPiece(unsigned int start) const {
    std::optional<Place> const first = firstFrom(start);
    if (!first) return notFound;
    unsigned int const found = position(*first);
    return found == 0 ? notFound : found - 1;
}

std::size_t CharacterText::writeRest(unsigned int start, char padChar, char* out) const {
    std::size_t const rest = text_.size() - start + 1;
    std::size_t const from = startOfPiece(start);
    if (from == notFound) {
        pad(out, rest, padChar);
        return rest;
    }
    std::size_t const cut = from - (start - 1);
    std::string_view const piece = text_.substr(from);
    if (isPlain_) {
        pad(out, cut, padChar);
        std::memcpy(out + cut, piece.data(), piece.size());
        return rest;
    }
    WidePiece const characters(piece);
    pad(out, cut, padChar);
    std::size_t written = cut;
    characters.visitBytes([&](std::string_view bytes) {
        std::memcpy(out + written, bytes.data(), bytes.size());
        written += bytes.size();
        return true;
    });
    return written;
}

void CharacterText::writePiece(unsigned int start, std::size_t count, char padChar, char* out) const {
    std::size_t const from = startOfPiece(start);
    if (from == notFound) {
        pad(out, count, padChar);
        return;
    }
    std::size_t const cut = std::min<std::size_t>(from - (start - 1), count);
    std::string_view const piece = text_.substr(from);
    std::size_t written = cut;
    if (isPlain_) {
        std::size_t const room = count - cut;
        std::size_t const whole = piece.size() <= room ? piece.size() : startAtOrBefore(piece, room);
        pad(out, cut, padChar);
        std::memcpy(out + cut, piece.data(), whole);
        written += whole;
    } else {
        WidePiece const characters(piece);
        pad(out, cut, padChar);
        characters.visitBytes([&](std::string_view bytes) {
            if (bytes.size() > count - written) return false; // only whole characters
            std::memcpy(out + written, bytes.data(), bytes.size());
            written += bytes.size();
            return written < count;
        });
    }
    pad(out + written, count - written, padChar);
}

} // namespace kelcl
