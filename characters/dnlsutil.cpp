// The national-language functions on raw multi-byte text.
#include "bytes/byte_search.h"
#include "bytes/digits.h"
#include "characters/conversion.h"
#include "characters/stepping.h"
#include "except/raise.h"

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>
#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <vector>

namespace {

// Hosts match on these line numbers.
constexpr unsigned long invalidSequenceLine = 725;
constexpr unsigned long incompleteSequenceLine = 760;
constexpr unsigned long unconvertibleLine = 880;

using kelcl::UtilitySteps;
using Outcome = UtilitySteps::Outcome;

/// The walkers look ahead as far as a character can reach; behind the text there is a NUL at the least.
constexpr std::size_t asFarAsNeeded = MB_LEN_MAX;

[[noreturn]] void raiseBadSequence(unsigned long line) {
    constexpr unsigned long badSequence = 1012;
    kelcl::raise(
        [] {
            return DInvalidRequest(DBase::messageText(badSequence), badSequence, DException::unrecoverable);
        },
        {"dnlsutil", nullptr, line});
}

[[noreturn]] void raiseUnconvertible() {
    kelcl::raise(DInvalidRequest("cvtWCS2MBS", 0, DException::recoverable),
                 {"dnlsutil", nullptr, unconvertibleLine});
}

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
    void skipKnown(std::size_t mostBytes, std::size_t mostCharacters) {
        if (inRun || !steps_.encoding().isKnown()) return;
        char const* const p = text_ + bytes;
        kelcl::Stretch run{0, 0};
        if (steps_.encoding().isUtf8)
            run = kelcl::plainUtf8Run(p, mostBytes, mostCharacters);
        else
            run.bytes = run.characters = kelcl::asciiRun(p, std::min(mostBytes, mostCharacters));
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
            kelcl::Stretch const known =
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

/// A piece of a text in wide characters, with the sequences that would not come back from these.
class WidePiece {
public:
    /// @throws DInvalidRequest at bytes that are no character.
    explicit WidePiece(std::string_view text) : wide_(new wchar_t[text.size()]) {
        count_ = widen(text, wide_.get(), [this](std::size_t place, std::string_view bytes) {
            pairs_.push_back({place, bytes});
        });
    }
    /// Calls `use(bytes)` for each character until it returns false.
    /// @throws DInvalidRequest at a value that does not convert back.
    template <class Use>
    void visitBytes(Use use) const {
        kelcl::NarrowCharacter character;
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

} // namespace

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
    kelcl::Encoding const encoding = kelcl::Encoding::current();
    kelcl::NarrowCharacter character(encoding);
    unsigned int written = 0;
    for (unsigned int i = 0; i < nwc && written < outLen; ++i) {
        kelcl::Stretch const known =
            kelcl::narrowKnown(out + written, outLen - written, wcs + i, nwc - i, encoding);
        written += static_cast<unsigned int>(known.bytes);
        i += static_cast<unsigned int>(known.characters);
        if (i == nwc || written == outLen) break;
        if (!character.convert(wcs[i])) raiseUnconvertible();
        if (character.length() > outLen - written) break; // only whole characters
        std::memcpy(out + written, character.bytes(), character.length());
        written += character.length();
    }
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

int isAllDigits(char const* s, unsigned int n) { return n == 0 || kelcl::isDecimalDigits({s, n}) ? 1 : 0; }
int isAllHexDigits(char const* s, unsigned int n) { return n == 0 || kelcl::isHexDigits({s, n}) ? 1 : 0; }

unsigned int indexThatIsNot(char const* s, unsigned int n, char c) {
    std::size_t const found = n == 0 ? kelcl::notFound : kelcl::findByteOtherThan({s, n}, c);
    return found == kelcl::notFound ? 0 : static_cast<unsigned int>(found) + 1;
}
