// A text as a row of characters: what the operations need that move, leave out or test whole characters. Text
// that is plain UTF-8 stays on its bytes; any other text is converted to wide characters and back. Operations
// leave that choice to this class. Only what maps every character, and so converts in any case, finds on the
// way whether the text is plain.
#ifndef KELCL_CHARACTERS_CHARACTER_TEXT_H
#define KELCL_CHARACTERS_CHARACTER_TEXT_H

#include "characters/conversion.h"
#include "characters/narrowing.h"
#include "characters/widened_pieces.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>

namespace kelcl {

/// How many bytes a result takes: exactly so many, or no more.
struct Room {
    std::size_t bytes;
    bool isExact;
};

/// The text must stay as it is meanwhile. Bytes are counted from 1, as in the classes of buffers.
///
/// All of the text is looked at once, when the object is made. What it says of places then comes from the
/// bytes nearby if they are plain UTF-8, else from a walk by the rule of the national-language functions.
class CharacterText {
public:
    /// Between two characters: the number of bytes in front of it where the text stays on its bytes, else the
    /// number of characters.
    using Place = std::size_t;

    /// Of several texts, all but the first may be told whether the locale has UTF-8.
    explicit CharacterText(std::string_view text, bool isUtf8 = isUtf8Locale())
        : text_(text), isPlain_(isUtf8 && (text.data() != nullptr || text.empty()) &&
                                isPlainUtf8(text.data(), text.size())) {}

    /// Whether the text is plain UTF-8, which converts to wide characters and back to itself.
    bool isPlain() const { return isPlain_; }

    // Places. They are found in text that does not convert as well.

    /// In front of the character that contains a byte; 0 where there is none.
    Place before(unsigned int position) const;
    /// After the character that contains a byte; 0 where there is none.
    Place after(unsigned int position) const;
    /// In front of the first character that starts at or after a byte, if there is one.
    std::optional<Place> firstFrom(unsigned int position) const;
    /// The byte with which the character after a place begins.
    unsigned int position(Place place) const;

    // Characters. Text that is not plain is converted first, unless it was before.

    /// @throws DInvalidRequest at bytes that are no character.
    void convert() {
        if (!isPlain_ && wide_ == nullptr) convertAll();
    }
    /// The place after the last character.
    Place end() {
        convert();
        return isPlain_ ? text_.size() : count_;
    }
    /// One character back from a place that is not 0.
    Place previous(Place place) const {
        if (isPlain_)
            while (isContinuation(text_[place - 1]))
                --place;
        return place - 1;
    }

    /// The value of the character after a place, which is then moved to its end. Converted text only.
    wchar_t take(Place& at) const {
        if (!isPlain_) return wide_[at++];
        char const* const p = text_.data() + at;
        std::size_t const length = plainUtf8Length(p, text_.size() - at);
        at += length;
        return plainUtf8Value(p, length);
    }
    /// In front of the first character from a place on whose value is wanted, else the end. ASCII characters
    /// that are known as not wanted, if any are, need not be asked for.
    template <class Wanted>
    Place findFirst(Place from, Wanted wanted, ByteSet const* unwanted = nullptr);
    /// After the last character up to a place whose value is wanted, else 0.
    template <class Wanted>
    Place findLast(Place to, Wanted wanted, ByteSet const* unwanted = nullptr);

    /// What the characters between two places take in bytes, which `write` writes there and counts.
    Room roomFor(Place from, Place to) {
        convert();
        return isPlain_ ? Room{to - from, true} : Room{maxBytesOf(to - from), false};
    }
    std::size_t write(Place from, Place to, char* out);
    /// Writes them as far as whole characters fit into `room` bytes, and counts their bytes. `from` is then
    /// moved to where the rest begins.
    std::size_t writeWhole(Place& from, Place to, char* out, std::size_t room);
    /// All characters the other way round, which `writeReversed` writes once.
    Room roomForAll() { return roomFor(0, end()); }
    std::size_t writeReversed(char* out) {
        if (!isPlain_) return writeWideReversed(out);
        reverseUtf8(out, text_.data(), text_.size());
        return text_.size();
    }

    // Pieces that are cut out by bytes, with pads in place of what is left of cut characters. All is pad when
    // the start cannot be located; what follows it must convert. Sequences of two wide characters stay as
    // they are.

    /// What the piece from a byte of the text to its end takes, which `writeRest` writes and counts.
    Room roomForRest(unsigned int start) const {
        std::size_t const bytes = text_.size() - start + 1;
        return {isPlain_ ? bytes : 2 * bytes, isPlain_};
    }
    std::size_t writeRest(unsigned int start, char padChar, char* out) const;
    /// Writes exactly `count` bytes, from a byte of the text on.
    void writePiece(unsigned int start, std::size_t count, char padChar, char* out) const;

private:
    void convertAll();
    std::size_t writeWideReversed(char* out);
    std::size_t startOfPiece(unsigned int start) const;
    /// In front of the first byte from a place on that is not in a set, after the last one up to a place.
    Place firstNotIn(ByteSet const& set, Place from) const;
    Place lastNotIn(ByteSet const& set, Place to) const;

    std::string_view text_;
    bool isPlain_;
    std::unique_ptr<wchar_t[]> wide_;
    std::size_t count_ = 0;
};

template <class Wanted>
CharacterText::Place CharacterText::findFirst(Place from, Wanted wanted, ByteSet const* unwanted) {
    Place const stop = end();
    bool const skips = isPlain_ && unwanted != nullptr;
    if (isPlain_ && !skips)
        return findInPieces(text_, from,
                            [wanted](wchar_t const* values, std::size_t n) {
                                return static_cast<std::size_t>(std::find_if(values, values + n, wanted) -
                                                                values);
                            })
            .at;
    while (from < stop) {
        Place next = from;
        wchar_t const value = take(next);
        if (wanted(value)) return from;
        from = next;
        // Where there is one there are often more.
        if (skips && value < 0x80) from = firstNotIn(*unwanted, from);
    }
    return stop;
}

template <class Wanted>
CharacterText::Place CharacterText::findLast(Place to, Wanted wanted, ByteSet const* unwanted) {
    bool const skips = isPlain_ && unwanted != nullptr;
    for (to = std::min(to, end()); to != 0;) {
        Place const from = previous(to);
        Place at = from;
        wchar_t const value = take(at);
        if (wanted(value)) return to;
        to = from;
        if (skips && value < 0x80) to = lastNotIn(*unwanted, to);
    }
    return 0;
}

} // namespace kelcl

#endif
