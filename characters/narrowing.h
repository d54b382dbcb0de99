// The way back from wide characters to bytes, with the failures that are reported on it.
#ifndef KELCL_CHARACTERS_NARROWING_H
#define KELCL_CHARACTERS_NARROWING_H

#include "characters/conversion.h"

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace kelcl {

/// Raises DInvalidRequest for a wide value that is no character of the locale.
[[noreturn]] void raiseUnconvertible();

/// The most bytes that so many characters take, as far as a text can be long.
std::size_t maxBytesOf(std::size_t characters);

/// Narrows wide characters up to the first one that does not fit whole into `room` bytes.
/// @throws DInvalidRequest at a value that is no character of the locale; what was written before stays.
Extent narrowWhole(char* out, std::size_t room, wchar_t const* in, std::size_t n);

/// A piece of a text in wide characters, with the sequences that would not come back from these.
class WidePiece {
public:
    /// @throws DInvalidRequest at bytes that are no character.
    explicit WidePiece(std::string_view text);
    /// Calls `use(bytes)` for each character until it returns false.
    /// @throws DInvalidRequest at a value that does not convert back.
    template <class Use>
    void visitBytes(Use use) const {
        NarrowCharacter character;
        auto pair = pairs_.begin();
        for (std::size_t i = 0; i < count_; ++i) {
            bool const isPair = pair != pairs_.end() && pair->place == i;
            if (!isPair && !character.convert(wide_[i])) raiseUnconvertible();
            if (!use(isPair ? pair->bytes : std::string_view(character.bytes(), character.length()))) return;
            if (isPair) ++pair;
        }
    }

private:
    struct Pair {
        std::size_t place;
        std::string_view bytes;
    };

    std::unique_ptr<wchar_t[]> wide_;
    std::size_t count_;
    std::vector<Pair> pairs_;
};

} // namespace kelcl

#endif
