// The national-language functions that cut pieces out of raw text: whole characters, with pads in place of
// cut ones.
#include "characters/character_text.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstring>
#include <string_view>

unsigned int getRemainString(char const* s, unsigned int len, unsigned int start, char padChar, char* out) {
    unsigned int const from = std::max(start, 1U);
    if (from > len) return 0;
    if (s == nullptr) {
        std::memset(out, padChar, len - from + 1);
        return len - from + 1;
    }
    kelcl::CharacterText const text(std::string_view(s, len));
    return static_cast<unsigned int>(text.writeRest(from, padChar, out));
}

char* getSubString(char const* s, unsigned int len, unsigned int start, char padChar, char* out,
                   unsigned int count) {
    if (count == 0) return out;
    unsigned int const from = std::max(start, 1U);
    if (s == nullptr || from > len) {
        std::memset(out, padChar, count);
        return out;
    }
    kelcl::CharacterText const text(std::string_view(s, len));
    text.writePiece(from, count, padChar, out);
    return out;
}
