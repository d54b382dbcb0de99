// Operations of multi-byte text in the locale of the environment: those of buffers and strings beside the
// plain model of the random tests, the functions on raw text beside plain forms that step with mbrtowc.
#include "fuzz/target.h"
#include "tests/buffers/random_operations.h"

#include <kelcl/dexception.h>
#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>

#include <clocale>
#include <cwchar>
#include <optional>
#include <vector>

namespace {

using std::string;
using std::wstring;

struct Character {
    unsigned int position; ///< Of its first byte, from 1.
    unsigned int length;   ///< In bytes.
    wchar_t value;
};

/// The characters of a text, up to the first bytes that are none.
struct Plain {
    std::vector<Character> characters;
    bool isWhole = true;

    explicit Plain(string const& text) {
        std::mbstate_t state{};
        for (std::size_t at = 0; at < text.size();) {
            wchar_t value = 0;
            std::size_t const n = std::mbrtowc(&value, text.data() + at, text.size() - at, &state);
            if (n > text.size()) {
                isWhole = false;
                return;
            }
            auto const length = static_cast<unsigned int>(n == 0 ? 1 : n);
            characters.push_back({static_cast<unsigned int>(at + 1), length, value});
            at += length;
        }
    }

    wstring wide() const {
        wstring result;
        for (Character const& character : characters)
            result += character.value;
        return result;
    }
    /// The index of the character that contains byte `position`, if that can be told.
    std::optional<std::size_t> containing(unsigned int position) const {
        for (std::size_t i = 0; i < characters.size(); ++i)
            if (position >= characters[i].position &&
                position - characters[i].position < characters[i].length)
                return i;
        return std::nullopt;
    }
    /// Where the character begins, which may be the bytes that are none; 0 when there is no such character.
    unsigned int positionOf(std::size_t index) const {
        if (index < characters.size()) return characters[index].position;
        if (isWhole || index > characters.size()) return 0;
        return characters.empty() ? 1 : characters.back().position + characters.back().length;
    }
};

/// A cut character at the end may be taken together with what stands after the text, a NUL here, which never
/// completes one: so what the text alone says is all there is.
void checkPositions(string const& text, Plain const& plain, unsigned int number) {
    auto const length = static_cast<unsigned int>(text.size());
    char const* const s = text.c_str();
    std::optional<std::size_t> const index =
        number <= length ? plain.containing(number) : std::optional<std::size_t>();
    unsigned int const count = index ? static_cast<unsigned int>(*index + 1) : 0;
    unsigned int const start = index ? plain.positionOf(*index) : 0;
    unsigned int const nextStart = index ? plain.positionOf(*index + 1) : 0;

    fuzz::same("findCharNum", findCharNum(s, length, number), count, text, number);
    fuzz::same("findCurPos", findCurPos(s, length, number), start, text, number);
    fuzz::same("findNextPos", findNextPos(s, length, number), nextStart, text, number);
    unsigned int const next = index && start == number ? count : nextStart != 0 ? count + 1 : 0;
    fuzz::same("findNextCharNum", findNextCharNum(s, length, number), next, text, number);
    unsigned int const position = number == 0 ? 0 : plain.positionOf(number - 1);
    fuzz::same("findBytePos", findBytePos(s, length, number), position, text, number);
}

/// What `action` throws by way of an unconvertible text.
template <class Action>
bool fails(Action action) {
    try {
        action();
        return false;
    } catch (DInvalidRequest const& exception) {
        fuzz::same("the error id", exception.errorId(), 1012UL);
        return true;
    }
}

void checkConversion(string const& text, Plain const& plain) {
    auto const length = static_cast<unsigned int>(text.size());
    wstring converted(text.size(), L'\0');
    unsigned long count = 0;
    bool const failed = fails([&] { count = cvtMBS2WCS(text.data(), length, converted.data()); });
    fuzz::same("cvtMBS2WCS fails", failed, !plain.isWhole, text);
    fuzz::same("DWBuffer fails", fails([&] { DWBuffer const buffer(text.data(), length); }), failed, text);
    if (failed) return;

    converted.resize(count);
    fuzz::holds("cvtMBS2WCS gives the values of mbrtowc", converted == plain.wide(), text);
    string back(4 * text.size(), '#');
    back.resize(cvtWCS2MBS(converted.data(), static_cast<unsigned int>(count), back.data(),
                           static_cast<unsigned int>(back.size()), 0, ' '));
    // Two spellings of one character give the first of them.
    fuzz::holds("the way back means the same characters", Plain(back).wide() == converted, text, back);
    if (Plain(text).isWhole && back == text) {
        DWBuffer const buffer(text.data(), length);
        buffer.reverse();
        fuzz::holds("reverse reverses",
                    wstring(buffer.wide, buffer.length) == wstring(converted.rbegin(), converted.rend()),
                    text);
    }
}

/// Writes exactly so many bytes, which begin at a character and end with one, or are pad.
void checkCutting(string const& text, Plain const& plain, unsigned int start, unsigned int count) {
    auto const length = static_cast<unsigned int>(text.size());
    string piece(count, '#');
    if (fails([&] { getSubString(text.c_str(), length, start, '.', piece.data(), count); })) {
        fuzz::holds("getSubString fails on bad text only", !plain.isWhole, text, start, count);
        return;
    }
    Plain const cut(piece);
    fuzz::holds("a piece of a text is a text", cut.isWhole, text, start, count, piece);
    fuzz::holds("a piece has no bytes that nobody wrote",
                piece.find('#') == string::npos || text.find('#') != string::npos, text, start, count, piece);
}

/// Where all is ASCII, characters are bytes.
void checkAscii(string text, unsigned int start, unsigned int count) {
    for (char& c : text)
        c = static_cast<char>(c & 0x7F);
    string piece = start > text.size() ? "" : text.substr(start == 0 ? 0 : start - 1, count);
    piece.resize(count, ' ');
    DString ascii(text);
    fuzz::same("subString of ASCII", std::string_view(ascii.subString(start, count)), std::string_view(piece),
               text, start, count);
    ascii.reverse();
    fuzz::same("reverse of ASCII", string(std::string_view(ascii)), string(text.rbegin(), text.rend()), text);
}

class Silent final : public DException::TraceFn {
public:
    TraceFn& logData(DException&) override { return *this; }
    void write(char const*) override {}
};

void checkUtilities(ByteChoices& choices) {
    string const text = choices.text(24);
    Plain const plain(text);
    checkPositions(text, plain, choices.below(static_cast<unsigned int>(text.size()) + 3));
    checkConversion(text, plain);
    unsigned int const start = choices.below(30);
    unsigned int const count = choices.below(30);
    checkCutting(text, plain, start, count);
    checkAscii(text, start, count);
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) {
    static Silent silent;
    std::setlocale(LC_ALL, "");
    DException::setTraceFunction(silent);
    return 0;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    constexpr unsigned int poolSeed = 1;
    ByteChoices choices(data, size);
    auto const operations = operationsOnMultiByteText(choices, poolSeed);
    while (!choices.isAtEnd()) {
        if (choices.oneIn(3))
            checkUtilities(choices);
        else if (!operations->runOne())
            fuzz::fail(operations->report());
    }
    return 0;
}
