// The national-language functions that tell positions in raw text, by bytes and by characters.
#include "characters/stepping.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <climits>
#include <cstddef>

namespace {

using kelcl::UtilitySteps;
using Outcome = UtilitySteps::Outcome;

/// The walkers look ahead as far as a character can reach; after the text there is at least a NUL.
constexpr std::size_t asFarAsNeeded = MB_LEN_MAX;

bool isOutside(char const* s, unsigned int len, unsigned int position) {
    return s == nullptr || position == 0 || position > len;
}

/// Walks a text from the front. An incomplete run counts as a character once it is closed by a complete one.
class ForwardWalk {
public:
    explicit ForwardWalk(char const* text) : text_(text) {}

    /// Takes one step; false at an invalid sequence.
    bool step() {
        UtilitySteps::Step const step = steps_.at(text_ + bytes, asFarAsNeeded);
        if (step.outcome == Outcome::invalid) return false;
        bool const closesRun = inRun;
        inRun = step.outcome == Outcome::incomplete;
        if (!closesRun) start = bytes;
        if (!inRun) {
            if (!closesRun) completeStart = bytes;
            ++characters;
        }
        bytes += step.bytes;
        return true;
    }
    /// Steps on until `target` bytes are passed; false at an invalid sequence.
    bool passes(std::size_t target) {
        while (bytes < target) {
            skipKnown(target - bytes, target - bytes);
            if (bytes < target && !step()) return false;
        }
        return true;
    }
    /// Takes characters at once where their encoding is known: within so many bytes, and no more than so
    /// many.
    void skipKnown(std::size_t maxBytes, std::size_t maxCharacters) {
        if (inRun || !steps_.encoding().isKnown()) return;
        char const* const p = text_ + bytes;
        kelcl::Extent run{0, 0};
        if (steps_.encoding().isUtf8)
            run = kelcl::plainUtf8Run(p, maxBytes, maxCharacters);
        else
            run.bytes = run.characters = kelcl::asciiRun(p, std::min(maxBytes, maxCharacters));
        if (run.bytes == 0) return;
        bytes += run.bytes;
        characters += static_cast<unsigned int>(run.characters);
        start = bytes - 1;
        while (steps_.encoding().isUtf8 && kelcl::isContinuation(text_[start]))
            --start;
        completeStart = start;
    }
    /// The number of the last character, an incomplete run included.
    unsigned int number() const { return characters + (inRun ? 1 : 0); }

    std::size_t bytes = 0;         ///< Passed so far.
    unsigned int characters = 0;   ///< Completed so far.
    std::size_t start = 0;         ///< Where the last character starts, or the run that it closes.
    std::size_t completeStart = 0; ///< Where the last character starts that closes no run.
    bool inRun = false;            ///< Whether the last step was incomplete.

private:
    char const* text_;
    UtilitySteps steps_;
};

} // namespace

unsigned int findBytePos(char const* s, unsigned int len, unsigned int charNum) {
    if (isOutside(s, len, charNum)) return 0;
    if (len == 1) return charNum == 1 ? 1 : 0;
    ForwardWalk walk(s);
    while (walk.characters + 1 < charNum && walk.bytes + 1 < len) {
        walk.skipKnown(len - 1 - walk.bytes, charNum - 1 - walk.characters);
        if (walk.characters + 1 < charNum && walk.bytes + 1 < len && !walk.step()) return 0;
    }
    return walk.bytes < len && walk.characters + 1 == charNum ? static_cast<unsigned int>(walk.bytes) + 1 : 0;
}

unsigned int findCharNum(char const* s, unsigned int len, unsigned int bytePos) {
    if (isOutside(s, len, bytePos)) return 0;
    if (kelcl::isUtf8Locale()) { // mostly there is nothing to walk
        kelcl::Extent const run = kelcl::plainUtf8Run(s, bytePos);
        if (run.bytes == bytePos) return static_cast<unsigned int>(run.characters);
    }
    ForwardWalk walk(s);
    return walk.passes(bytePos) ? walk.number() : 0;
}

unsigned int findCurPos(char const* s, unsigned int len, unsigned int bytePos) {
    if (isOutside(s, len, bytePos)) return 0;
    ForwardWalk walk(s);
    return walk.passes(bytePos) ? static_cast<unsigned int>(walk.start) + 1 : 0;
}

unsigned int findNextPos(char const* s, unsigned int len, unsigned int bytePos) {
    if (isOutside(s, len, bytePos)) return 0;
    ForwardWalk walk(s);
    if (!walk.passes(bytePos)) return 0;
    while (walk.inRun && walk.bytes < len)
        if (!walk.step()) return 0;
    return walk.bytes < len ? static_cast<unsigned int>(walk.bytes) + 1 : 0;
}

unsigned int findNextCharNum(char const* s, unsigned int len, unsigned int bytePos) {
    if (isOutside(s, len, bytePos)) return 0;
    ForwardWalk walk(s);
    if (!walk.passes(bytePos)) return 0;
    if (walk.completeStart + 1 == bytePos) return walk.number();
    unsigned int const candidate = walk.number() + 1;
    return findBytePos(s, len, candidate) != 0 ? candidate : 0;
}
