// The national-language functions that cut pieces out of raw text: whole characters, with pads in place of
// cut ones.
#include "characters/conversion.h"
#include "characters/stepping.h"
#include "characters/wide_piece.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace {

using kelcl::WidePiece;

/// Where a piece of a text begins: the first character that starts at or after byte `start`; 0 when it is
/// not to be located.
unsigned int locatePiece(char const* s, unsigned int len, unsigned int start) {
    unsigned int const character = findNextCharNum(s, len, start);
    return character == 0 ? 0 : findBytePos(s, len, character);
}

/// Fills `out` behind `cut` pad characters with as many whole characters of plain UTF-8 as fit, and pads the
/// rest.
void copyWholeCharacters(std::string_view text, char padChar, char* out, unsigned int cut,
                         unsigned int count) {
    std::size_t bytes = std::min<std::size_t>(text.size(), count - cut);
    while (bytes > 0 && bytes < text.size() && kelcl::isContinuation(text[bytes]))
        --bytes;
    std::memset(out, padChar, cut);
    std::memcpy(out + cut, text.data(), bytes);
    std::memset(out + cut + bytes, padChar, count - cut - bytes);
}

} // namespace

unsigned int getRemainString(char const* s, unsigned int len, unsigned int start, char padChar, char* out) {
    if (start > len) return 0;
    unsigned int const from = std::max(start, 1U);
    if (from > len) return 0;
    unsigned int const position = s != nullptr ? locatePiece(s, len, from) : 0;
    if (position == 0) {
        std::memset(out, padChar, len - from + 1);
        return len - from + 1;
    }
    unsigned int const cut = position - from;
    std::string_view const piece(s + position - 1, len - position + 1);
    if (kelcl::isPlainUtf8Text(s, len)) { // what converts to itself need not be converted
        std::memset(out, padChar, cut);
        std::memcpy(out + cut, piece.data(), piece.size());
        return len - from + 1;
    }
    WidePiece const characters(piece);
    std::memset(out, padChar, cut);
    unsigned int written = cut;
    characters.visitBytes([&](std::string_view bytes) {
        std::memcpy(out + written, bytes.data(), bytes.size());
        written += static_cast<unsigned int>(bytes.size());
        return true;
    });
    return written;
}

char* getSubString(char const* s, unsigned int len, unsigned int start, char padChar, char* out,
                   unsigned int count) {
    if (count == 0) return out;
    unsigned int const from = std::max(start, 1U);
    unsigned int const position = s != nullptr && from <= len ? locatePiece(s, len, from) : 0;
    if (position == 0) {
        std::memset(out, padChar, count);
        return out;
    }
    unsigned int const cut = std::min(position - from, count);
    std::string_view const piece(s + position - 1, len - position + 1);
    if (kelcl::isPlainUtf8Text(s, len)) { // what converts to itself need not be converted
        copyWholeCharacters(piece, padChar, out, cut, count);
        return out;
    }
    WidePiece const characters(piece);
    std::memset(out, padChar, cut);
    std::size_t written = cut;
    characters.visitBytes([&](std::string_view bytes) {
        if (bytes.size() > count - written) return false; // only whole characters
        std::memcpy(out + written, bytes.data(), bytes.size());
        written += bytes.size();
        return written < count;
    });
    std::memset(out + written, padChar, count - written);
    return out;
}
