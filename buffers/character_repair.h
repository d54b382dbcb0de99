// What is left of a character that a byte edit cut is overwritten: its head before the cut, its tail after
// it.
#ifndef KELCL_BUFFERS_CHARACTER_REPAIR_H
#define KELCL_BUFFERS_CHARACTER_REPAIR_H

#include "buffers/host_classes.h"
#include "characters/stepping.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <optional>

namespace kelcl {

/// Tells where in its character a byte is. Texts of the library's own class are looked at, asking for the
/// encoding once and only if the bytes leave it open; those of a host's class are asked each time.
class PlacesInCharacters {
public:
    explicit PlacesInCharacters(DBuffer const& text) : text_(text) {}

    /// 2 or more inside a character; less at its start and outside of the text.
    unsigned int at(unsigned int position) {
        if (position == 0 || position > text_.length) return 0;
        if (!isMultiByteClass(text_)) return text_.charType(position);
        return surelyBeginsCharacter(text_.contents(), position - 1) ? 0 : placeOf(position - 1);
    }

private:
    unsigned int placeOf(std::size_t at) {
        if (!steps_) steps_.emplace();
        if (steps_->isUtf8() && !isContinuation(text_.contents()[at])) return 1;
        return placeInCharacter(at);
    }

    unsigned int placeInCharacter(std::size_t at);

    DBuffer const& text_;
    std::optional<BufferSteps> steps_;
};

/// Repairs the result of one edit of an old text.
class CharacterRepair {
public:
    CharacterRepair(DBuffer const& old, DBuffer& result) : places_(old), result_(result) {}

    /// If byte `cut` of the old text is inside a character, overwrites that character's head, which ends at
    /// position `last` of the result, with `padCharacter`. Nothing in front of the result is written.
    void blankHead(unsigned int cut, unsigned int last, char padCharacter) {
        if (unsigned int const place = places_.at(cut); place >= 2) blankUpTo(last, place - 1, padCharacter);
    }

    /// If byte `cut` of the old text is inside a character, overwrites that character's tail, which begins at
    /// position `first` of the result, with `padCharacter`. Nothing past the end of the result is written.
    void blankTail(unsigned int cut, unsigned int first, char padCharacter) {
        for (; first <= result_.length && places_.at(cut) >= 2; ++cut, ++first)
            result_.contents()[first - 1] = padCharacter;
    }

private:
    void blankUpTo(unsigned int last, unsigned int count, char padCharacter) {
        unsigned int const end = std::min(last, result_.length);
        unsigned int const blanks = std::min(count, end);
        std::memset(result_.contents() + end - blanks, padCharacter, blanks);
    }

    PlacesInCharacters places_;
    DBuffer& result_;
};

} // namespace kelcl

#endif
