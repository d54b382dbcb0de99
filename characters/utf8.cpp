// UTF-8 counted, converted and reversed: the plain forms, and where the kernels in blocks take over.
#include "characters/utf8.h"

#include "bytes/byte_edit.h"
#include "characters/utf8_blocks.h"

#include <algorithm>
#include <utility>

namespace kelcl {

namespace {

/// How many to take by themselves where the blocks stop.
constexpr std::size_t few = 32;

#if KELCL_HAS_BLOCKS
/// Whether blocks are worth their start, and may read what they do.
bool goesByBlocks(std::size_t n) { return n >= 16 && processorHasBlocks(); }
#endif

} // namespace

Stretch plainUtf8Run(char const* p, std::size_t n, std::size_t most) {
    Stretch run{0, 0};
#if KELCL_HAS_BLOCKS
    if (goesByBlocks(n)) run = blocks::plainBlocks(p, n, most);
#endif
    while (run.bytes < n && run.characters < most) {
        std::size_t const length = plainUtf8Length(p + run.bytes, n - run.bytes);
        if (length == 0) break;
        run.bytes += length;
        ++run.characters;
    }
    return run;
}

Stretch widenUtf8(wchar_t* out, char const* in, std::size_t n) {
    Stretch done{0, 0};
    while (done.bytes < n) {
#if KELCL_HAS_BLOCKS
        if (goesByBlocks(n - done.bytes)) {
            std::size_t const ascii =
                blocks::widenAsciiBlocks(out + done.characters, in + done.bytes, n - done.bytes);
            done = {done.bytes + ascii, done.characters + ascii};
        }
        if (goesByBlocks(n - done.bytes)) {
            Stretch const more = blocks::widenBlocks(out + done.characters, in + done.bytes, n - done.bytes);
            done = {done.bytes + more.bytes, done.characters + more.characters};
        }
#endif
        for (std::size_t const stop = std::min(n, done.bytes + few); done.bytes < stop;) {
            std::size_t const length = plainUtf8Length(in + done.bytes, n - done.bytes);
            if (length == 0) return done;
            out[done.characters++] = plainUtf8Value(in + done.bytes, length);
            done.bytes += length;
        }
    }
    return done;
}

Stretch narrowUtf8(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Stretch done{0, 0};
    while (done.characters < n) {
#if KELCL_HAS_BLOCKS
        if (processorHasBlocks()) {
            Stretch const more = blocks::narrowBlocks(out + done.bytes, room - done.bytes,
                                                      in + done.characters, n - done.characters);
            done = {done.bytes + more.bytes, done.characters + more.characters};
        }
#endif
        for (std::size_t const stop = std::min(n, done.characters + few); done.characters < stop;
             ++done.characters) {
            std::size_t const length = utf8LengthOf(in[done.characters]);
            if (length == 0 || length > room - done.bytes) return done;
            writeUtf8(out + done.bytes, in[done.characters], length);
            done.bytes += length;
        }
    }
    return done;
}

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
