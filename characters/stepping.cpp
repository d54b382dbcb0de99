// Stepping through the characters of multi-byte text: where the C library is asked.
#include "characters/stepping.h"

#include <algorithm>
#include <bit>

namespace kelcl {

Encoding Encoding::current() {
    if (isUtf8Locale()) return {true, nullptr};
    return other(nl_langinfo(CODESET));
}

Encoding Encoding::other(char const* codeset) {
    EncodingTable const* const table = EncodingTable::of(codeset);
    // What is looked up there may be longer than the converters are to look at.
    bool const isTooLong = table != nullptr && table->hasLongCharacters() && !isMultiByteLocale();
    return {false, isTooLong ? nullptr : table};
}

unsigned int BufferSteps::askLibrary(char const* p, std::size_t available) {
    std::size_t const window = available < longestCharacter ? available : longestCharacter;
    CharacterRead const read = readCharacter(p, window, state_);
    state_ = {};
    if (read.length == 0) return askLibrary(p, available); // the caller's state held back a wide character
    return read.isCharacter() ? static_cast<unsigned int>(read.length) : 1;
}

UtilitySteps::Step UtilitySteps::askLibrary(char const* p, std::size_t available, wchar_t& value) {
    std::size_t const window = std::min(available, MB_CUR_MAX);
    CharacterRead const read = readCharacter(p, window, state_);
    isInside_ = read.length == incompleteSequence;
    if (read.length == invalidSequence) return {Outcome::invalid, 0, 0};
    if (isInside_) return {Outcome::incomplete, window, 0};
    value = read.value;
    return {read.second == 0 ? Outcome::character : Outcome::twoCharacters, read.length, read.second};
}

bool beginsLongerCharacter(char byte) {
    std::mbstate_t state{};
    return std::mbrlen(&byte, 1, &state) == incompleteSequence;
}

namespace {

/// A character start at or before `at` that a walk from any place before `from` comes by, or notFound. Of six
/// neighbouring places one at least is a start, so walks begin at all of them; where they have met, the right
/// one is among them.
std::size_t whereWalksMeet(char const* text, std::size_t from, std::size_t at, BufferSteps const& known) {
    if (known.encoding().table == nullptr) return notFound; // characters may depend on each other
    BufferSteps steps(known.encoding());
    unsigned int walks = (1U << BufferSteps::longestCharacter) - 1; // one bit for each place from `from` on
    while (from <= at) {
        if (walks == 1) return from;
        walks |= 1U << steps.length(text + from);
        auto const done = std::countr_zero(walks & ~1U);
        walks >>= done;
        from += static_cast<std::size_t>(done);
    }
    return notFound;
}

/// Back from `at` to the first place that is not before `lowest` and after a byte that ends a character, or
/// to `lowest`.
std::size_t afterEnd(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps) {
    while (at > lowest && !steps.isBoundary(text[at - 1], text[at]))
        --at;
    return at;
}

/// The same for a long way, eight bytes at a time.
std::size_t afterFarEnd(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps) {
    for (constexpr std::size_t block = 8; at - lowest >= block; at -= block) {
        bool ends = false;
        for (std::size_t i = 1; i <= block; ++i)
            ends |= steps.endsCharacter(text[at - i]);
        if (ends) break;
    }
    return afterEnd(text, at, lowest, steps);
}

constexpr std::size_t near = 256;
constexpr std::size_t far = 4096;

/// The same as boundaryBefore where no byte ends a character for long. In most texts the characters
/// themselves tell: read from a wrong place they soon are none. To try that costs little beside what was
/// looked at before, so where it fails there is little lost, and nothing for it but to go on.
[[gnu::noinline]] std::size_t farBoundary(char const* text, std::size_t at, std::size_t lowest,
                                          BufferSteps const& steps) {
    std::size_t looked = near;
    for (std::size_t const next : {far, at - lowest}) {
        std::size_t const met = whereWalksMeet(text, at - looked / 16, at, steps);
        if (met != notFound) return met;
        std::size_t const nearest = at - std::min(next, at - lowest);
        std::size_t const start = afterFarEnd(text, at - looked, nearest, steps);
        if (start > nearest || start == lowest) return start;
        looked = next;
    }
    return lowest;
}

} // namespace

std::size_t boundaryBefore(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps) {
    if (steps.standsAlone(text[at])) return at;
    std::size_t const nearest = at - std::min(at - lowest, near);
    std::size_t const start = afterEnd(text, at, nearest, steps);
    return start > nearest || start == lowest ? start : farBoundary(text, at, lowest, steps);
}

std::size_t startOfCharacter(char const* text, std::size_t at, BufferSteps& steps) {
    if (steps.isUtf8()) return startOfUtf8Character(text, at, steps);
    std::size_t start = boundaryBefore(text, at, 0, steps);
    for (std::size_t next = start; next <= at; next += steps.length(text + next))
        start = next;
    return start;
}

void FallingStarts::walkTo(std::size_t offset) {
    stretch_ = boundaryBefore(text_, offset, 0, steps_);
    std::size_t const words = (offset - stretch_) / bitsInWord + 1;
    starts_ = room_.data();
    if (words > room_.size()) {
        // The stretches lie one before the other, so all that is ever allocated is an eighth of the text.
        moreRoom_ = std::make_unique_for_overwrite<std::uint64_t[]>(words);
        starts_ = moreRoom_.get();
    }
    std::fill_n(starts_, words, 0);
    for (std::size_t at = stretch_; at <= offset; at += steps_.length(text_ + at))
        starts_[(at - stretch_) / bitsInWord] |= std::uint64_t{1} << (at - stretch_) % bitsInWord;
}

std::size_t FallingStarts::startInStretch(std::size_t offset) const {
    std::size_t const place = offset - stretch_;
    std::size_t word = place / bitsInWord;
    std::uint64_t starts = starts_[word] & ~std::uint64_t{0} >> (bitsInWord - 1 - place % bitsInWord);
    while (starts == 0)
        starts = starts_[--word];
    return stretch_ + word * bitsInWord + static_cast<std::size_t>(std::bit_width(starts)) - 1;
}

} // namespace kelcl
