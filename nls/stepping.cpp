// Stepping through the characters of multi-byte text: where the C library is asked.
#include "nls/stepping.h"

#include "string/known_start.h"

#include <langinfo.h>

namespace kelcl {

Encoding Encoding::current() {
    char const* const codeset = nl_langinfo(CODESET);
    if (kelcl::isUtf8(codeset)) return {true, nullptr};
    return {false, EncodingTable::of(codeset)};
}

unsigned int BufferSteps::askLibrary(char const* p, std::size_t available) {
    std::size_t const window = available < longestCharacter ? available : longestCharacter;
    std::size_t const length = std::mbrlen(p, window, &state_);
    if (length == invalidSequence || length == incompleteSequence) {
        state_ = std::mbstate_t{}; // the next byte begins anew
        return 1;
    }
    return length < 1 ? 1 : static_cast<unsigned int>(length);
}

UtilitySteps::Step UtilitySteps::askLibrary(char const* p, std::size_t window, wchar_t& value) {
    std::size_t const length = std::mbrtowc(&value, p, window, &state_);
    isInside_ = length == incompleteSequence;
    if (length == invalidSequence) return {Outcome::invalid, 0};
    if (length == incompleteSequence) return {Outcome::incomplete, window};
    return {Outcome::character, length == 0 ? 1 : length};
}

bool beginsLongerCharacter(char byte) {
    std::mbstate_t state{};
    return std::mbrlen(&byte, 1, &state) == incompleteSequence;
}

std::size_t boundaryBefore(char const* text, std::size_t at, std::size_t lowest, BufferSteps const& steps) {
    if (steps.standsAlone(text[at])) return at;
    while (at > lowest && !steps.endsCharacter(text[at - 1]))
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
