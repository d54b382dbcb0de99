// The national-language functions that convert raw text. Reports of what does not convert name this file, and
// hosts match on that. Positions, pieces and tests of bytes have files of their own.
#include "characters/conversion.h"
#include "characters/narrowing.h"
#include "characters/stepping.h"
#include "except/raise.h"

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>
#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string_view>

namespace {

// Hosts match on these line numbers.
constexpr unsigned long invalidSequenceLine = 725;
constexpr unsigned long incompleteSequenceLine = 760;
constexpr unsigned long unconvertibleLine = 880;

using kelcl::UtilitySteps;
using Outcome = UtilitySteps::Outcome;

[[noreturn]] void raiseBadSequence(unsigned long line) {
    constexpr unsigned long badSequence = 1012;
    kelcl::raise(
        [] {
            return DInvalidRequest(DBase::messageText(badSequence), badSequence, DException::unrecoverable);
        },
        {"dnlsutil", nullptr, line});
}

/// Converts a text to wide characters and returns how many they are. Calls `takePair(place, bytes)` for a
/// sequence of two wide characters, of which only the first one is stored, at that place.
/// @throws DInvalidRequest at bytes that are no character.
template <class TakePair>
std::size_t widen(std::string_view text, wchar_t* wide, TakePair takePair) {
    UtilitySteps steps;
    std::size_t count = 0;
    bool inRun = false;
    for (std::size_t at = 0; at < text.size();) {
        if (!inRun) {
            kelcl::Extent const known =
                kelcl::widenKnown(wide + count, text.data() + at, text.size() - at, steps.encoding());
            count += known.characters;
            at += known.bytes;
            if (at == text.size()) break;
        }
        UtilitySteps::Step const step = steps.at(text.data() + at, text.size() - at, wide[count]);
        if (step.outcome == Outcome::invalid) raiseBadSequence(invalidSequenceLine);
        if (step.outcome == Outcome::twoCharacters) takePair(count, text.substr(at, step.bytes));
        inRun = step.outcome == Outcome::incomplete;
        if (!inRun) ++count;
        at += step.bytes;
    }
    if (inRun) raiseBadSequence(incompleteSequenceLine);
    return count;
}

} // namespace

namespace kelcl {

void raiseUnconvertible() {
    raise(DInvalidRequest("cvtWCS2MBS", 0, DException::recoverable),
          {"dnlsutil", nullptr, unconvertibleLine});
}

WidePiece::WidePiece(std::string_view text) : wide_(new wchar_t[text.size()]) {
    count_ = widen(text, wide_.get(), [this](std::size_t place, std::string_view bytes) {
        pairs_.push_back({place, bytes});
    });
}

std::size_t maxBytesOf(std::size_t characters) {
    // MB_CUR_MAX may be less than a character has.
    std::size_t const longest = std::max(MB_CUR_MAX, BufferSteps::longestCharacter);
    return std::min<std::size_t>(characters * longest, UINT_MAX);
}

Extent narrowWhole(char* out, std::size_t room, wchar_t const* in, std::size_t n) {
    Encoding const encoding = Encoding::current();
    NarrowCharacter character(encoding);
    Extent done{0, 0};
    while (done.characters < n && done.bytes < room) {
        Extent const known = narrowKnown(out + done.bytes, room - done.bytes, in + done.characters,
                                         n - done.characters, encoding);
        done = {done.bytes + known.bytes, done.characters + known.characters};
        if (done.characters == n || done.bytes == room) break;
        if (!character.convert(in[done.characters])) raiseUnconvertible();
        if (character.length() > room - done.bytes) break;
        std::memcpy(out + done.bytes, character.bytes(), character.length());
        done = {done.bytes + character.length(), done.characters + 1};
    }
    return done;
}

} // namespace kelcl

unsigned long cvtMBS2WCS(char const* mbs, unsigned int len, wchar_t* wcs) {
    if (mbs == nullptr || len == 0 || wcs == nullptr) return 0;
    return widen({mbs, len}, wcs,
                 [](std::size_t, std::string_view) { raiseBadSequence(invalidSequenceLine); });
}

int cvtMB2WC(char const* s, unsigned int n, wchar_t* pwc, std::mbstate_t* state) {
    if (s == nullptr) return cvtMB2WC("", 1, nullptr, state); // as mbrtowc has it
    UtilitySteps steps(state != nullptr ? *state : std::mbstate_t{});
    wchar_t value = 0;
    UtilitySteps::Step const step = steps.at(s, n, value);
    if (step.outcome == Outcome::invalid || step.outcome == Outcome::twoCharacters)
        raiseBadSequence(invalidSequenceLine);
    if (state != nullptr) *state = steps.state();
    if (step.outcome == Outcome::incomplete) raiseBadSequence(incompleteSequenceLine);
    if (pwc != nullptr) *pwc = value;
    return static_cast<int>(step.bytes);
}

unsigned int cvtWCS2MBS(wchar_t const* wcs, unsigned int nwc, char* out, unsigned int outLen, int pad,
                        char padChar) {
    if (wcs == nullptr || out == nullptr || outLen == 0) return 0;
    auto const written = static_cast<unsigned int>(kelcl::narrowWhole(out, outLen, wcs, nwc).bytes);
    if (pad == 0) return written;
    std::memset(out + written, padChar, outLen - written);
    return outLen;
}

unsigned int cvtWCS2MBS(DWBuffer const& wbuf, char* out, unsigned int outLen, int pad, char padChar) {
    return cvtWCS2MBS(wbuf.wide, wbuf.length, out, outLen, pad, padChar);
}

unsigned int insWCS2WCS(wchar_t* src, int srcLen, wchar_t* ins, int insLen, int pos, wchar_t* dst) {
    wchar_t* out = dst;
    int const before = std::clamp(pos, 0, std::max(srcLen, 0));
    out = std::copy_n(src, before, out);
    if (insLen > 0) out = std::copy_n(ins, insLen, out);
    if (before < srcLen) out = std::copy_n(src + before, srcLen - before, out);
    return static_cast<unsigned int>(out - dst);
}
