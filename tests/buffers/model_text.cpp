// The model of multi-byte text: its characters, their wide values, and positions by characters.
#include "tests/buffers/model.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <optional>

namespace model {

bool wideMode() { return DString::fgI18NState == 1; }

// Characters

unsigned int characterLength(char const* p) {
    std::mbstate_t state{};
    std::size_t const n = std::mbrlen(p, 6, &state);
    return n == invalid || n == incomplete || n < 1 ? 1 : static_cast<unsigned int>(n);
}

unsigned int typeOf(Text const& t, unsigned int index) {
    if (index == 0) return 0;
    unsigned int offset = 0;
    for (;;) {
        unsigned int const n = characterLength(t.at(offset + 1));
        if (offset + n >= index) return n == 1 ? 0 : index - offset;
        offset += n;
    }
}

unsigned int previousLength(Text const& t, unsigned int index) {
    return index == 1 ? 1 : std::max(typeOf(t, index - 1), 1U);
}

bool isMember(Text const& t, unsigned int index, Text const& set) {
    unsigned int const wanted = characterLength(t.at(index));
    for (unsigned int at = 1; at <= set.length;) {
        unsigned int const n = std::min(characterLength(set.at(at)), set.length - at + 1);
        if (n == wanted && std::memcmp(set.at(at), t.at(index), n) == 0) return true;
        at += n;
    }
    return false;
}

// Wide values

namespace {

string narrowCharacter(wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    std::size_t const n = std::wcrtomb(bytes, c, &state);
    if (n == invalid) throw Failure{0, 880};
    if (std::mbsinit(&state) != 0) return {bytes, n};
    return {bytes, std::wcrtomb(bytes, L'\0', &state) - 1}; // what is held back comes out in front of a NUL
}

struct Read {
    wchar_t value;
    string bytes;
    bool isPair; ///< Whether the bytes give one more wide character.
};

/// The characters from a position on.
std::vector<Read> readFrom(Text const& t, unsigned int position, bool takesPairs) {
    std::vector<Read> result;
    while (position <= t.length) {
        std::mbstate_t state{};
        wchar_t c = 0;
        std::size_t const most = std::min<std::size_t>(MB_CUR_MAX, t.length - position + 1);
        std::size_t const n = std::mbrtowc(&c, t.at(position), most, &state);
        if (n == invalid) throw Failure{1012, 725};
        if (n == incomplete) throw Failure{1012, 760}; // none of the locales has one but at the end
        bool const isPair = std::mbsinit(&state) == 0;
        if (isPair && !takesPairs) throw Failure{1012, 725};
        unsigned int const length = n == 0 ? 1 : static_cast<unsigned int>(n);
        result.push_back({c, t.piece(position, length), isPair});
        position += length;
    }
    return result;
}

} // namespace

wstring widened(Text const& t) {
    wstring result;
    for (Read const& character : readFrom(t, 1, false))
        result += character.value;
    return result;
}

std::vector<wstring> allWidened(std::vector<Text> const& texts) {
    std::vector<wstring> result;
    std::optional<Failure> failure;
    for (Text const& t : texts) {
        try {
            result.push_back(widened(t));
        } catch (Failure const& f) {
            failure = failure ? Failure{f.id, 0} : f;
        }
    }
    if (failure) throw *failure;
    return result;
}

string narrowed(wstring const& wide) {
    string result;
    for (wchar_t const c : wide)
        result += narrowCharacter(c);
    return result;
}

string narrowedTo(unsigned int width, wstring const& wide, char pad) {
    string result;
    if (width == 0) return result;
    for (wchar_t const c : wide) {
        string const bytes = narrowCharacter(c);
        if (result.size() + bytes.size() > width) break;
        result += bytes;
        if (result.size() == width) return result;
    }
    result.resize(width, pad);
    return result;
}

std::vector<string> broughtBack(Text const& t, unsigned int position) {
    std::vector<string> result;
    for (Read const& character : readFrom(t, position, true))
        result.push_back(character.isPair ? character.bytes : narrowCharacter(character.value));
    return result;
}

// Positions by characters. The C library may look ahead as far as a character can reach.

namespace {

std::size_t step(char const* p) {
    std::mbstate_t state{};
    std::size_t const n = std::mbrlen(p, MB_CUR_MAX, &state);
    return n == 0 ? 1 : n;
}

struct Located {
    unsigned int number = 0;
    unsigned int start = 0;
};

Located locate(Text const& t, unsigned int position) {
    if (position == 0 || position > t.length) return {};
    unsigned int bytes = 0;
    Located found;
    while (bytes < position) {
        std::size_t const n = step(t.at(bytes + 1));
        if (n == invalid || n == incomplete) return {};
        found = {found.number + 1, bytes + 1};
        bytes += static_cast<unsigned int>(n);
    }
    return found;
}

} // namespace

unsigned int bytePosition(Text const& t, unsigned int number) {
    if (number == 0 || number > t.length) return 0;
    if (t.length == 1) return number == 1 ? 1 : 0;
    unsigned int p = 1;
    unsigned int c = 1;
    while (c < number && p < t.length) {
        std::size_t const n = step(t.at(p));
        if (n == invalid || n == incomplete) return 0;
        p += static_cast<unsigned int>(n);
        ++c;
    }
    return p <= t.length && c == number ? p : 0;
}

unsigned int characterNumber(Text const& t, unsigned int position) { return locate(t, position).number; }

unsigned int nextCharacterNumber(Text const& t, unsigned int position) {
    Located const found = locate(t, position);
    if (found.number == 0 || found.start == position) return found.number;
    return bytePosition(t, found.number + 1) != 0 ? found.number + 1 : 0;
}

} // namespace model
