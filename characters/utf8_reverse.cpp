// Plain UTF-8 with its characters in reverse order: all bytes are reversed as fast as they can be, and then
// the bytes of each character put right again.
#include "characters/utf8.h"

#include "bytes/byte_edit.h"

#include <utility>

namespace kelcl {

void reverseUtf8(char* out, char const* in, std::size_t n) {
    copyReversed(out, in, n);
    // Now the bytes of each character stand the wrong way round.
    for (std::size_t at = 0; at < n;) {
        char* const p = out + at;
        if (!isContinuation(*p)) {
            at += asciiRun(p, n - at);
        } else if (!isContinuation(p[1])) {
            std::swap(p[0], p[1]);
            at += 2;
        } else if (!isContinuation(p[2])) {
            std::swap(p[0], p[2]);
            at += 3;
        } else {
            std::swap(p[0], p[3]);
            std::swap(p[1], p[2]);
            at += 4;
        }
    }
}

} // namespace kelcl
