// The search of multi-byte text for the characters outside of one of the library's own classes, by the first
// bytes of characters.
#ifndef KELCL_BUFFERS_OUTSIDE_OF_CLASS_H
#define KELCL_BUFFERS_OUTSIDE_OF_CLASS_H

#include "buffers/buffer_block.h"
#include "characters/character_classes.h"
#include "characters/stepping.h"

#include <kelcl/dbuffer.h>

#include <cstddef>
#include <optional>

namespace kelcl {

/// The class of the library's own that the test is for, if it is one that can be searched for: its members in
/// ASCII stand alone in every encoding.
inline CharacterClass const* searchableClass(DStringTest const& test) {
    CharacterClass const* const known = classOf(functionOf(test));
    return known != nullptr && known->standsAloneAnywhere ? known : nullptr;
}

/// A search for the characters outside of such a class: the bytes that it has in ASCII are skipped by the
/// byte kernels, and it is asked about what is in between.
class OutsideOfClass {
public:
    OutsideOfClass(DBuffer const& text, CharacterClass const& members) : text_(text), members_(members) {}

    /// The offset of the first one from the character start `at` on, or notFound.
    std::size_t first(std::size_t at) {
        for (;;) {
            std::size_t const found = findFirstNotIn(bytesOf(text_).substr(at), members_.ascii);
            if (found == notFound) return found;
            at += found;
            if (isOutside(at)) return at;
            at += steps().length(text_.contents() + at);
        }
    }

    /// The offset of the last one up to the character that contains the byte before `end`, or notFound.
    std::size_t last(std::size_t end) {
        while (end != 0) {
            end = findLastNotIn(bytesOf(text_).substr(0, end), members_.ascii);
            if (end == notFound) return end;
            if (!surelyBeginsCharacter(text_.contents(), end)) {
                if (!starts_) starts_.emplace(text_.contents(), steps());
                end = starts_->startOf(end);
            }
            if (isOutside(end)) return end;
        }
        return notFound;
    }

private:
    /// Of a byte that is not one of the members in ASCII.
    bool isOutside(std::size_t at) const {
        auto const byte = static_cast<signed char>(text_.contents()[at]);
        return byte >= 0 || members_.test(byte) == 0;
    }

    BufferSteps& steps() {
        if (!steps_) steps_.emplace();
        return *steps_;
    }

    DBuffer const& text_;
    CharacterClass const& members_;
    std::optional<BufferSteps> steps_; // asked for where it is needed
    std::optional<FallingStarts> starts_;
};

} // namespace kelcl

#endif
