// How the inputs of the random operations on multi-byte text are made up.
#include "tests/buffers/random_inputs.h"

#include <array>
#include <climits>
#include <cwchar>
#include <ostream>
#include <utility>

namespace mb {

using std::string;

namespace {

constexpr std::array<model::Function, 7> predicates = {
    [](int c) -> int { return c < 0; },
    [](int c) -> int { return c & 1; },
    [](int c) -> int { return c >= '0' && c <= '9'; },
    [](int c) -> int { return c == 'A' || c == '\\' || c == 0x3042; },
    [](int c) -> int { return c > 0x7F; },
    [](int c) -> int { return c == 0; },
    [](int) -> int { return 1; }};

void addTo(Pool& pool, wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    std::size_t n = std::wcrtomb(bytes, c, &state);
    if (c == 0 || n == model::invalid) return;
    if (std::mbsinit(&state) == 0) n = std::wcrtomb(bytes, L'\0', &state) - 1; // was held back
    if (n != 0) pool.emplace_back(bytes, n); // the C library leaves some out, as tags of languages
}

/// Adds sequences that give two wide characters, where there are any, and twice, as they are few.
void addPairs(Pool& pool) {
    int left = 3;
    for (unsigned int bytes = 0x8000; bytes < 0x10000 && left > 0; ++bytes) {
        char const sequence[] = {static_cast<char>(bytes >> 8), static_cast<char>(bytes & 0xFF)};
        std::mbstate_t state{};
        wchar_t value = 0;
        if (std::mbrtowc(&value, sequence, 2, &state) != 2 || std::mbsinit(&state) != 0) continue;
        pool.insert(pool.end(), 2, string(sequence, 2));
        --left;
    }
}

unsigned int lengthOf(string const& bytes) { return static_cast<unsigned int>(bytes.size()); }

/// Makes up the inputs, the text first: the others are related to it.
class Maker {
public:
    Maker(Choices& choices, Pool const& pool) : choices_(choices), pool_(pool) {}

    Inputs make() {
        inputs_.text = randomText();
        inputs_.first = relatedText();
        inputs_.second = relatedText();
        inputs_.pad = " .-\0\xFF\x81"
                      "A"[below(7)];
        inputs_.a = number();
        inputs_.b = number();
        inputs_.test = predicates[below(static_cast<unsigned int>(predicates.size()))];
        inputs_.mode = static_cast<DStringEnum::StripMode>(below(3));
        return std::move(inputs_);
    }

private:
    unsigned int below(unsigned int n) { return choices_.below(n); }
    bool oneIn(unsigned int n) { return choices_.oneIn(n); }

    string const& poolCharacter() { return pool_[below(static_cast<unsigned int>(pool_.size()))]; }

    string randomCharacter() {
        if (oneIn(2)) return string(1, "aAbBzZ019 .\\~\0-"[below(15)]);
        return poolCharacter();
    }

    string badBytes() {
        static string const odd[] = {
            "\xC0\x80", "\xED\xA0\x80", "\xF8\x88\x80\x80\x80", "\xFC\x84\x80\x80\x80\x80", "\xFF",
            "\x80",     "\x8F\xA1",     "\x81\x30\x81",         "\xF4\x90\x80\x80",         "\x8E"};
        if (oneIn(3)) return odd[below(10)];
        if (oneIn(2)) return string(1, static_cast<char>(below(256)));
        string const whole = poolCharacter();
        return oneIn(2) ? whole.substr(0, whole.size() - 1) : whole.substr(1);
    }

    string randomText(unsigned int most = 0) {
        if (most == 0) most = oneIn(200) ? (oneIn(4) ? 6000 : 1500) : oneIn(20) ? 200 : oneIn(3) ? 4 : 14;
        unsigned int const characters = below(most + 1);
        bool const bad = oneIn(3);
        bool const few = oneIn(3);
        string const one = randomCharacter();
        string const other = randomCharacter();
        string result;
        for (unsigned int i = 0; i < characters; ++i) {
            if (bad && oneIn(4))
                result += badBytes();
            else if (few)
                result += oneIn(2) ? one : other;
            else
                result += randomCharacter();
        }
        if (oneIn(10)) result += badBytes();
        return result;
    }

    /// An argument: often a piece of the text, by bytes.
    string relatedText() {
        if (oneIn(8)) return "";
        if (oneIn(3)) return randomText(5);
        if (oneIn(6)) return string(1, static_cast<char>(below(256)));
        if (inputs_.text.empty()) return randomCharacter();
        std::size_t const from = below(lengthOf(inputs_.text));
        string result = inputs_.text.substr(from, 1 + below(6));
        if (oneIn(4)) result += randomText(3);
        return result;
    }

    unsigned int number() {
        unsigned int const n = lengthOf(inputs_.text);
        if (oneIn(12)) return 0;
        if (oneIn(8)) return n + below(6);
        return below(n + 2);
    }

    Choices& choices_;
    Pool const& pool_;
    Inputs inputs_;
};

} // namespace

Pool makePool(Choices& choices) {
    Pool pool;
    for (wchar_t const c :
         L"\u00E9\u00DF\u00FF\u00B5\u0131\u0430\u042F\u03B1\u03A9\u3042\u30A2\u4E00\u8868\u4E02"
         L"\uAC00\uFF11\uFF71\u3000\u00A0\U0001F600\U00020000\u0080\u0101\u00CA\u304B")
        addTo(pool, c);
    addPairs(pool);
    for (wchar_t const c :
         L"\\~\u00A5\u203E\uFF3C\uFF5E") // some encodings do not have ASCII in its own places
        addTo(pool, c);
    for (int i = 0; i < 4000 && pool.size() < 60; ++i)
        addTo(pool, static_cast<wchar_t>(choices.below(choices.oneIn(3) ? 0x110000 : 0x10000)));
    return pool;
}

Inputs chooseInputs(Choices& choices, Pool const& pool) { return Maker(choices, pool).make(); }

string escaped(string const& bytes) {
    static constexpr char digits[] = "0123456789ABCDEF";
    string result = "\"";
    for (char const c : bytes) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte < 0x7F && c != '\\')
            result += c;
        else
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
    return result + '"';
}

std::ostream& operator<<(std::ostream& out, Inputs const& inputs) {
    return out << "text " << escaped(inputs.text) << "\n  arguments " << escaped(inputs.first) << ' '
               << escaped(inputs.second) << "\n  numbers " << inputs.a << ' ' << inputs.b << ", strip mode "
               << static_cast<unsigned int>(inputs.mode) << ", pad " << escaped(string(1, inputs.pad));
}

} // namespace mb
