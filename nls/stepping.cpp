// Stepping through the characters of multi-byte text: where the C library is asked.
#include "nls/stepping.h"

#include "string/known_start.h"

#include <langinfo.h>

namespace kelcl {

Encoding Encoding::current() {
    if (isUtf8Locale()) return {true, nullptr};
    EncodingTable const* const table = EncodingTable::of(nl_langinfo(CODESET));
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

UtilitySteps::Step UtilitySteps::askLibrary(char const* p, std::size_t window, wchar_t& value) {
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

std::size_t boundaryBefore(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps) {
    if (steps.standsAlone(text[at])) return at;
    while (at > lowest && !steps.isBoundary(text[at - 1], text[at]))
        --at;
    return at;
}

std::size_t startOfCharacter(char const* text, std::size_t at, BufferSteps& steps) {
    if (steps.isUtf8()) return startOfUtf8Character(text, at, steps);
    std::size_t start = boundaryBefore(text, at, KnownStart::atOrBefore(text, at), steps);
    for (std::size_t next = start; next <= at; next += steps.length(text + next))
        start = next;
    KnownStart::note(text, start);
    return start;
}

std::size_t FallingStarts::startByWalk(std::size_t offset) {
    while (!starts_.empty() && starts_.back() > offset)
        starts_.pop_back();
    if (starts_.empty())
        for (std::size_t at = boundaryBefore(text_, offset, 0, steps_); at <= offset;
             at += steps_.length(text_ + at))
            starts_.push_back(at);
    return starts_.back();
}

} // namespace kelcl
