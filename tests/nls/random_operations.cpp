// Every operation of the multi-byte buffer on random texts, beside a slow and plain model that walks its
// texts a character at a time with the C library: valid text, bytes that are no character, truncated
// characters, NULs, starts inside of characters, sole and shared receivers.
#include "tests/nls/random_operations.h"

#include <kelcl/dbuffer.h>
#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <optional>
#include <random>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using std::string;
using std::string_view;
using std::wstring;

using Function = int (*)(int);

constexpr auto invalid = static_cast<std::size_t>(-1);
constexpr auto incomplete = static_cast<std::size_t>(-2);

bool wideMode() { return DString::fgI18NState == 1; }

// The model

/// What the model says that is thrown. A line of 0 stands for any: several arguments are bad.
struct Failure {
    unsigned long id;
    unsigned long line;
};

/// Bytes with enough NULs behind them for the C library to look ahead.
class Text {
public:
    Text(string_view bytes) // NOLINT: a text is what its bytes are
        : bytes_(string(bytes) + string(8, '\0')), length(static_cast<unsigned int>(bytes.size())) {}

private:
    string bytes_;

public:
    unsigned int length;
    char const* at(unsigned int position) const { return bytes_.data() + position - 1; }
    string_view view() const { return {bytes_.data(), length}; }
    string piece(unsigned int position, unsigned int count) const {
        return bytes_.substr(position - 1, count);
    }
    string from(unsigned int position) const {
        return position > length ? "" : string(view().substr(position - 1));
    }
};

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

wstring widened(Text const& t) {
    wstring result;
    std::mbstate_t state{};
    for (unsigned int at = 1; at <= t.length;) {
        wchar_t c = 0;
        std::size_t const n =
            std::mbrtowc(&c, t.at(at), std::min<std::size_t>(MB_CUR_MAX, t.length - at + 1), &state);
        if (n == invalid) throw Failure{1012, 725};
        if (n == incomplete) throw Failure{1012, 760}; // none of the locales has one but at the end
        result += c;
        at += n == 0 ? 1 : static_cast<unsigned int>(n);
    }
    return result;
}

/// The arguments as wide characters: one failure, whichever comes first when several are bad.
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

string narrowCharacter(wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    std::size_t const n = std::wcrtomb(bytes, c, &state);
    if (n == invalid) throw Failure{0, 880};
    return {bytes, n};
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

// Positions by characters. The C library may look ahead as far as a character can reach.

std::size_t step(char const* p) {
    std::mbstate_t state{};
    std::size_t const n = std::mbrlen(p, MB_CUR_MAX, &state);
    return n == 0 ? 1 : n;
}

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

unsigned int characterNumber(Text const& t, unsigned int position) { return locate(t, position).number; }

unsigned int nextCharacterNumber(Text const& t, unsigned int position) {
    Located const found = locate(t, position);
    if (found.number == 0 || found.start == position) return found.number;
    return bytePosition(t, found.number + 1) != 0 ? found.number + 1 : 0;
}

string remainOf(Text const& t, unsigned int start, char pad) {
    if (start > t.length) return "";
    unsigned int const from = std::max(start, 1U);
    if (from > t.length) return "";
    unsigned int const k = nextCharacterNumber(t, from);
    unsigned int const p = k == 0 ? 0 : bytePosition(t, k);
    if (p == 0) return string(t.length - from + 1, pad);
    return string(p - from, pad) + narrowed(widened(t).substr(k - 1));
}

string pieceOf(Text const& t, unsigned int start, char pad, unsigned int count) {
    if (count == 0) return "";
    unsigned int const from = std::max(start, 1U);
    if (from > t.length) return string(count, pad);
    unsigned int const k = nextCharacterNumber(t, from);
    unsigned int const p = k == 0 ? 0 : bytePosition(t, k);
    if (p == 0) return string(count, pad);
    wstring const wide = widened(t);
    if (count <= p - from) return string(count, pad);
    string result(p - from, pad);
    for (wchar_t const c : wide.substr(k - 1)) {
        string const bytes = narrowCharacter(c);
        if (result.size() + bytes.size() > count) break;
        result += bytes;
        if (result.size() == count) break;
    }
    result.resize(count, pad);
    return result;
}

// Searches

unsigned int startForward(Text const& t, unsigned int start, unsigned int n) {
    unsigned int p = std::max(start, 1U);
    if (p > t.length || n > t.length - p + 1) return 0;
    while (p <= t.length && typeOf(t, p) >= 2)
        ++p;
    return p <= t.length ? p : 0;
}

unsigned int startBackward(Text const& t, unsigned int start, unsigned int n) {
    if (n > t.length) return 0;
    unsigned int p = std::min({start, t.length, t.length - n + 1});
    while (p != 0 && typeOf(t, p) > 1)
        --p;
    return p;
}

template <class Wanted>
unsigned int forward(Text const& t, unsigned int p, Wanted wanted) {
    while (p != 0 && p <= t.length) {
        if (wanted(p)) return p;
        p += characterLength(t.at(p));
    }
    return 0;
}

template <class Wanted>
unsigned int backward(Text const& t, unsigned int p, Wanted wanted) {
    while (p != 0) {
        if (wanted(p)) return p;
        p -= previousLength(t, p);
    }
    return 0;
}

bool aloneIncomplete(char c) {
    std::mbstate_t state{};
    return std::mbrlen(&c, 1, &state) == incomplete;
}

int signedByte(char const* p) { return static_cast<signed char>(*p); }

unsigned int indexOfAnyOf(Text const& t, Text const& set, unsigned int start) {
    unsigned int const p = startForward(t, start, 1);
    if (set.length == 0) return 0;
    if (set.length == 1) return forward(t, p, [&](unsigned int q) { return *t.at(q) == *set.at(1); });
    return forward(t, p, [&](unsigned int q) { return isMember(t, q, set); });
}

unsigned int indexOf(Text const& t, Text const& pattern, unsigned int start) {
    unsigned int const n = pattern.length;
    if (n == 1) return indexOfAnyOf(t, pattern, start);
    unsigned int const p = startForward(t, start, n);
    if (n == 0) return 0;
    return forward(t, p, [&](unsigned int q) {
        return q + n - 1 <= t.length && std::memcmp(t.at(q), pattern.at(1), n) == 0;
    });
}

unsigned int indexOfAnyBut(Text const& t, Text const& set, unsigned int start) {
    unsigned int p = startForward(t, start, 1);
    if (p == 0 || set.length == 0) return p;
    if (set.length > 1) return forward(t, p, [&](unsigned int q) { return !isMember(t, q, set); });
    if (*set.at(1) != '\0' && aloneIncomplete(*set.at(1))) return p;
    for (; p <= t.length; ++p)
        if (*t.at(p) != *set.at(1)) return p;
    return 0;
}

unsigned int lastIndexOf(Text const& t, Text const& pattern, unsigned int start) {
    unsigned int const n = pattern.length;
    unsigned int const p = startBackward(t, start, n);
    if (n == 0) return 0;
    return backward(t, p, [&](unsigned int q) { return std::memcmp(t.at(q), pattern.at(1), n) == 0; });
}

unsigned int lastIndexOfAnyOf(Text const& t, Text const& set, unsigned int start) {
    unsigned int const p = startBackward(t, start, 1);
    if (set.length == 0) return 0;
    if (set.length == 1) return backward(t, p, [&](unsigned int q) { return *t.at(q) == *set.at(1); });
    return backward(t, p, [&](unsigned int q) { return isMember(t, q, set); });
}

unsigned int lastIndexOfAnyBut(Text const& t, Text const& set, unsigned int start) {
    unsigned int const p = startBackward(t, start, 1);
    if (p == 0 || set.length == 0) return p;
    if (set.length > 1) return backward(t, p, [&](unsigned int q) { return !isMember(t, q, set); });
    if (*set.at(1) != '\0' && aloneIncomplete(*set.at(1))) return 0;
    return backward(t, p, [&](unsigned int q) { return *t.at(q) != *set.at(1); });
}

unsigned int firstWide(Text const& t, Function test, bool wanted, unsigned int start) {
    unsigned int const k = nextCharacterNumber(t, std::max(start, 1U));
    if (k == 0) return 0;
    wstring const wide = widened(t);
    for (std::size_t i = k - 1; i < wide.size(); ++i)
        if ((test(static_cast<int>(wide[i])) != 0) == wanted)
            return bytePosition(t, static_cast<unsigned int>(i) + 1);
    return 0;
}

unsigned int lastWide(Text const& t, Function test, bool wanted, unsigned int start) {
    unsigned int const k = characterNumber(t, std::min(start, t.length));
    if (k == 0) return 0;
    wstring const wide = widened(t);
    for (std::size_t i = k; i-- > 0;)
        if ((test(static_cast<int>(wide[i])) != 0) == wanted)
            return bytePosition(t, static_cast<unsigned int>(i) + 1);
    return 0;
}

unsigned int indexOfAnyOf(Text const& t, Function test, unsigned int start) {
    if (wideMode()) return firstWide(t, test, true, start);
    unsigned int const p = startForward(t, start, 1);
    for (unsigned int q = p; q != 0 && q <= t.length; ++q)
        if (test(signedByte(t.at(q))) != 0) return q;
    return 0;
}

unsigned int indexOfAnyBut(Text const& t, Function test, unsigned int start) {
    if (wideMode()) return firstWide(t, test, false, start);
    return forward(t, startForward(t, start, 1),
                   [&](unsigned int q) { return test(signedByte(t.at(q))) == 0; });
}

unsigned int lastIndexOfAnyOf(Text const& t, Function test, unsigned int start) {
    if (wideMode()) return lastWide(t, test, true, start);
    return backward(t, startBackward(t, start, 1),
                    [&](unsigned int q) { return test(signedByte(t.at(q))) != 0; });
}

unsigned int lastIndexOfAnyBut(Text const& t, Function test, unsigned int start) {
    if (wideMode()) return lastWide(t, test, false, start);
    return backward(t, startBackward(t, start, 1),
                    [&](unsigned int q) { return test(signedByte(t.at(q))) == 0; });
}

unsigned int windexOfAnyBut(Text const& t, Function test, unsigned int start) {
    return forward(t, startForward(t, start, 1), [&](unsigned int q) {
        wchar_t c = 0;
        std::mbstate_t state{};
        std::size_t const n = std::mbrtowc(&c, t.at(q), MB_CUR_MAX, &state);
        bool const converts = n != invalid && n != incomplete;
        return test(converts ? static_cast<int>(c) : signedByte(t.at(q))) == 0;
    });
}

// Edits

/// The result of an edit. Unchanged: the receiver itself comes back. In place: it does when it is the sole
/// owner.
struct Edited {
    enum class Where { fresh, unchanged, inPlace };
    string bytes;
    Where where = Where::fresh;
};

Edited same(Text const& t) { return {string(t.view()), Edited::Where::unchanged}; }

void padTail(Text const& t, unsigned int cut, string& result, unsigned int first, char pad) {
    while (cut <= t.length && typeOf(t, cut) >= 2 && first <= result.size()) {
        result[first - 1] = pad;
        ++first;
        ++cut;
    }
}

void padHead(Text const& t, unsigned int cut, string& result, unsigned int last, char pad) {
    if (cut == 0 || cut > t.length) return;
    unsigned int const type = typeOf(t, cut);
    for (unsigned int i = 1; i < type && last >= 1; ++i, --last)
        if (last <= result.size()) result[last - 1] = pad;
}

string subStringOf(Text const& t, unsigned int start, unsigned int count, char pad) {
    if (wideMode()) return pieceOf(t, start, pad, count);
    unsigned int const s = std::max(start, 1U);
    unsigned int const available = s > t.length ? 0 : t.length - s + 1;
    unsigned int const take = std::min(count, available);
    unsigned int const from = start != 0 && s <= t.length ? start : 1;
    string result = t.piece(from, take) + string(count - take, pad);
    padTail(t, from, result, 1, pad);
    if (t.length >= take + from) padHead(t, from + count, result, count, pad);
    return result;
}

Edited caseOf(Text const& t, bool upper) {
    if (wideMode()) {
        if (t.length == 0) return same(t);
        wstring wide = widened(t);
        for (wchar_t& c : wide)
            c = static_cast<wchar_t>(upper ? std::towupper(static_cast<std::wint_t>(c))
                                           : std::towlower(static_cast<std::wint_t>(c)));
        return {narrowed(wide)};
    }
    Text const letters(upper ? "abcdefghijklmnopqrstuvwxyz" : "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    unsigned int hit = indexOfAnyOf(t, letters, 1);
    if (hit == 0) return same(t);
    string result(t.view());
    for (; hit != 0; hit = indexOfAnyOf(t, letters, hit + 1))
        if (typeOf(t, hit) == 0) result[hit - 1] = static_cast<char>(result[hit - 1] + (upper ? -32 : 32));
    return {result, Edited::Where::inPlace};
}

std::vector<string> charactersOf(Text const& t) {
    std::vector<string> result;
    for (unsigned int at = 1; at <= t.length; at += static_cast<unsigned int>(result.back().size()))
        result.push_back(t.piece(at, std::min(characterLength(t.at(at)), t.length - at + 1)));
    return result;
}

Edited translated(Text const& t, Text const& from, Text const& to, char pad) {
    if (wideMode()) {
        std::vector<wstring> all = allWidened({from, to, Text(string(1, pad)), t});
        for (wchar_t& c : all[3]) {
            std::size_t const place = all[0].find(c);
            if (place != wstring::npos) c = place < all[1].size() ? all[1][place] : all[2][0];
        }
        return {narrowed(all[3])};
    }
    std::vector<string> const search = charactersOf(from);
    std::vector<string> const replace = charactersOf(to);
    string result;
    for (string const& character : charactersOf(t)) {
        auto const place =
            static_cast<std::size_t>(std::find(search.begin(), search.end(), character) - search.begin());
        if (place == search.size())
            result += character;
        else
            result += place < replace.size() ? replace[place] : string(1, pad);
    }
    return {result};
}

Edited strippedWide(wstring const& wide, DStringEnum::StripMode mode, std::vector<bool> const& goes) {
    std::size_t first = 0;
    std::size_t behind = wide.size();
    if (mode != DStringEnum::trailing)
        while (first < behind && goes[first])
            ++first;
    if (mode != DStringEnum::leading)
        while (behind > first && goes[behind - 1])
            --behind;
    return {narrowed(wide.substr(first, behind - first))};
}

/// `What` is a set or a test.
template <class What>
Edited strippedBytes(Text const& t, What const& what, DStringEnum::StripMode mode) {
    unsigned int first = 1;
    unsigned int last = t.length;
    if (mode != DStringEnum::trailing) first = indexOfAnyBut(t, what, 1);
    if (mode == DStringEnum::both && first == 0) return {""};
    if (mode != DStringEnum::leading) {
        last = lastIndexOfAnyBut(t, what, t.length);
        if (last != 0) last += characterLength(t.at(last)) - 1;
    }
    if (first == 1 && last == t.length) return same(t);
    if (first == 0) return {""};
    return {t.piece(first, last + 1 - first)};
}

Edited stripped(Text const& t, Text const& set, DStringEnum::StripMode mode) {
    if (t.length == 0) return same(t);
    if (!wideMode()) return strippedBytes(t, set, mode);
    std::vector<wstring> const all = allWidened({t, set});
    std::vector<bool> goes;
    for (wchar_t const c : all[0])
        goes.push_back(all[1].find(c) != wstring::npos);
    return strippedWide(all[0], mode, goes);
}

Edited stripped(Text const& t, Function test, DStringEnum::StripMode mode) {
    if (t.length == 0) return same(t);
    if (!wideMode()) return strippedBytes(t, test, mode);
    wstring const wide = widened(t);
    std::vector<bool> goes;
    for (wchar_t const c : wide)
        goes.push_back(test(static_cast<int>(c)) != 0);
    return strippedWide(wide, mode, goes);
}

Edited reversed(Text const& t) {
    if (t.length < 2) return same(t);
    if (wideMode()) {
        wstring wide = widened(t);
        std::reverse(wide.begin(), wide.end());
        return {narrowed(wide)};
    }
    string result;
    for (string const& character : charactersOf(t))
        result.insert(0, character);
    return {result};
}

Edited overlaid(Text const& t, Text const& data, unsigned int position, char pad) {
    if (data.length == 0 && position <= t.length) return same(t);
    position = std::max(position, 1U);
    unsigned int const behind = position + data.length;
    if (position > t.length)
        return {string(t.view()) + string(position - 1 - t.length, pad) + string(data.view())};
    if (wideMode()) {
        string result = pieceOf(t, 1, pad, position - 1) + string(data.view());
        if (t.length >= behind) result += remainOf(t, behind, pad);
        return {result};
    }
    string result = t.piece(1, position - 1) + string(data.view()) + t.from(behind);
    padHead(t, position, result, position - 1, ' ');
    padTail(t, behind, result, behind, pad);
    return {result};
}

Edited leftJustified(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) return {string(t.view()) + string(width - t.length, pad)};
    if (wideMode()) return {narrowedTo(width, widened(t), pad)};
    string result = t.piece(1, width);
    padHead(t, width + 1, result, width, pad);
    return {result};
}

Edited rightJustified(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) return {string(width - t.length, pad) + string(t.view())};
    string result = t.piece(t.length - width + 1, width);
    padTail(t, t.length - width + 1, result, 1, pad);
    return {result};
}

Edited inserted(Text const& t, Text const& data, unsigned int position, char pad) {
    if (data.length == 0 && position <= t.length) return same(t);
    if (position > t.length)
        return {string(t.view()) + string(position - t.length, pad) + string(data.view())};
    if (wideMode()) {
        unsigned int const k = characterNumber(t, position);
        std::vector<wstring> const all = allWidened({t, data});
        return {narrowedTo(t.length + data.length, all[0].substr(0, k) + all[1] + all[0].substr(k), pad)};
    }
    while (position > 0 && position < t.length && typeOf(t, position + 1) >= 2)
        --position;
    return {t.piece(1, position) + string(data.view()) + t.from(position + 1)};
}

Edited centered(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) {
        unsigned int const left = (width - t.length) / 2;
        return {string(left, pad) + string(t.view()) + string(width - t.length - left, pad)};
    }
    unsigned int s = (t.length - width) / 2 + 1;
    if (wideMode()) {
        unsigned int const k = characterNumber(t, s);
        wstring const wide = widened(t);
        return {narrowedTo(width, wide.substr(k - 1, wide.size() - k), pad)};
    }
    if (t.length - width > 1)
        while (s > 1 && typeOf(t, s) >= 2)
            --s;
    string result = t.piece(s, width);
    padHead(t, s + width, result, width, pad);
    return {result};
}

Edited removed(Text const& t, unsigned int start, unsigned int count) {
    if (start > t.length || t.length == 0) return same(t);
    unsigned int const s = std::max(start, 1U);
    unsigned int const n = std::min(count, t.length - s + 1);
    string result = t.piece(1, s - 1) + t.from(s + n);
    padHead(t, s, result, s - 1, ' ');
    padTail(t, s + n, result, s, ' ');
    return {result};
}

Edited changed(Text const& t, Text const& pattern, Text const& replacement, unsigned int start,
               unsigned int most) {
    string result;
    unsigned int copied = 0;
    unsigned int count = 0;
    for (unsigned int p = start; count < most; ++count) {
        p = indexOf(t, pattern, p);
        if (p == 0) break;
        result += t.piece(copied + 1, p - 1 - copied) + string(replacement.view());
        copied = p - 1 + pattern.length;
        p += pattern.length;
    }
    if (count == 0) return same(t);
    return {result + t.from(copied + 1),
            pattern.length == replacement.length ? Edited::Where::inPlace : Edited::Where::fresh};
}

// The trial

constexpr std::array<Function, 7> predicates = {
    [](int c) -> int { return c < 0; },
    [](int c) -> int { return c & 1; },
    [](int c) -> int { return c >= '0' && c <= '9'; },
    [](int c) -> int { return c == 'A' || c == '\\' || c == 0x3042; },
    [](int c) -> int { return c > 0x7F; },
    [](int c) -> int { return c == 0; },
    [](int) -> int { return 1; }};

/// Swallows the reports of exceptions while it lives.
class SilentLog final : public DException::TraceFn {
public:
    SilentLog() : before_(DExceptStaticPtr::userFunction) { DException::setTraceFunction(*this); }
    SilentLog(SilentLog const&) = delete;
    SilentLog& operator=(SilentLog const&) = delete;
    ~SilentLog() { DExceptStaticPtr::userFunction = before_; }
    TraceFn& logData(DException&) override {
        ++count;
        return *this;
    }
    void write(char const*) override {}
    unsigned int count = 0;

private:
    DException::TraceFn* before_;
};

void release(DBuffer* buffer) {
    if (--buffer->refs == 0) delete buffer;
}

string textOf(DBuffer const& buffer) { return {buffer.contents(), buffer.length}; }

/// Characters of this locale.
using Pool = std::vector<string>;

void addTo(Pool& pool, wchar_t c) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    std::size_t const n = std::wcrtomb(bytes, c, &state);
    if (c != 0 && n != invalid && n != 0) pool.emplace_back(bytes, n);
}

Pool makePool(Choices& choices) {
    Pool pool;
    for (wchar_t const c :
         L"\u00E9\u00DF\u00FF\u00B5\u0131\u0430\u042F\u03B1\u03A9\u3042\u30A2\u4E00\u8868\u4E02"
         L"\uAC00\uFF11\uFF71\u3000\u00A0\U0001F600\U00020000\u0080\u0101")
        addTo(pool, c);
    for (wchar_t const c :
         L"\\~\u00A5\u203E\uFF3C\uFF5E") // some encodings do not have ASCII in its own places
        addTo(pool, c);
    for (int i = 0; i < 4000 && pool.size() < 60; ++i)
        addTo(pool, static_cast<wchar_t>(choices.below(choices.oneIn(3) ? 0x110000 : 0x10000)));
    return pool;
}

class Trial {
public:
    Trial(Choices& choices, Pool const& pool) : choices_(choices), pool_(pool) {}

    /// One operation; false when something differs, told by `report`.
    bool run() {
        given_ = randomText();
        first_ = relatedText();
        second_ = relatedText();
        pad_ = " .-\0\xFF\x81"
               "A"[below(7)];
        a_ = number();
        b_ = number();
        test_ = predicates[below(static_cast<unsigned int>(predicates.size()))];
        mode_ = static_cast<DStringEnum::StripMode>(below(3));
        failed_.clear();
        switch (below(3)) {
        case 0:
            search();
            break;
        case 1:
            edit();
            break;
        default:
            editString();
        }
        return failed_.empty();
    }

    string report() const {
        std::ostringstream out;
        out << name_ << ": " << failed_ << "\n  text " << escaped(given_) << "\n  arguments "
            << escaped(first_) << ' ' << escaped(second_) << "\n  numbers " << a_ << ' ' << b_
            << ", strip mode " << static_cast<unsigned int>(mode_) << ", pad " << escaped(string(1, pad_))
            << (shared_ ? ", shared" : "");
        return out.str();
    }

private:
    unsigned int below(unsigned int n) { return choices_.below(n); }
    bool oneIn(unsigned int n) { return choices_.oneIn(n); }

    static string escaped(string const& bytes) {
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
        if (most == 0) most = oneIn(20) ? 200 : oneIn(3) ? 4 : 14;
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
        if (given_.empty()) return randomCharacter();
        std::size_t const from = below(static_cast<unsigned int>(given_.size()));
        string result = given_.substr(from, 1 + below(6));
        if (oneIn(4)) result += randomText(3);
        return result;
    }

    unsigned int number() {
        auto const n = static_cast<unsigned int>(given_.size());
        if (oneIn(12)) return 0;
        if (oneIn(8)) return n + below(6);
        return below(n + 2);
    }
    /// For searches anything will do.
    unsigned int start() { return a_ = oneIn(10) ? choices_.any() : a_; }

    char const* argument(string const& bytes, std::unique_ptr<char[]>& room) {
        // Exactly as many bytes as there are, so that a sanitizer sees a look behind them.
        room.reset(new char[std::max<std::size_t>(bytes.size(), 1)]);
        std::memcpy(room.get(), bytes.data(), bytes.size());
        return room.get();
    }

    static unsigned int lengthOf(string const& bytes) { return static_cast<unsigned int>(bytes.size()); }

    DBuffer* receiver() {
        DBuffer* const buffer = DBuffer::defaultBuffer()->newBuffer(given_.data(), lengthOf(given_));
        shared_ = oneIn(2);
        if (shared_) ++buffer->refs;
        return buffer;
    }

    void release(DBuffer* buffer) {
        if (shared_) ::release(buffer);
        ::release(buffer);
    }

    /// What an operation gave or how it failed, in a form to be compared and printed.
    template <class Operation>
    string outcomeOf(Operation operation) {
        SilentLog const log;
        std::ostringstream out;
        try {
            out << operation();
        } catch (Failure const& f) {
            out << "throws " << f.id << " line " << f.line;
        } catch (DInvalidRequest const& f) {
            out << "throws " << f.errorId() << " line " << f.locationAtIndex(0)->lineNumber();
            if (log.count != 1) out << " logged " << log.count << " times";
        }
        return out.str();
    }

    static bool agree(string const& is, string const& shouldBe) {
        if (shouldBe == "throws 1012 line 0")
            return is == "throws 1012 line 725" || is == "throws 1012 line 760";
        return is == shouldBe;
    }

    void check(string const& is, string const& shouldBe) {
        if (!agree(is, shouldBe)) failed_ = "is " + is + ", should be " + shouldBe;
    }

    template <class Is, class ShouldBe>
    void found(char const* name, Is is, ShouldBe shouldBe) {
        name_ = name;
        check(outcomeOf(is), outcomeOf(shouldBe));
    }

    void search();
    void searchWithTest(DBuffer const& buffer, Text const& t);
    void edit();
    void editString();

    /// Calls an edit of a buffer, and checks the result, which buffer it is, and that the receiver stays.
    template <class Operation, class Model>
    void edited(char const* name, Operation operation, Model model) {
        name_ = name;
        DBuffer* const buffer = receiver();
        unsigned int const refs = buffer->refs;
        Edited shouldBe;
        string const expected = outcomeOf([&] {
            shouldBe = model();
            return escaped(shouldBe.bytes);
        });
        DBuffer* result = nullptr;
        string const is = outcomeOf([&] {
            result = operation(buffer);
            return escaped(textOf(*result));
        });
        check(is, expected);
        if (result == nullptr) {
            if (buffer->refs != refs || textOf(*buffer) != given_)
                failed_ = "the receiver changed by a failure";
        } else {
            checkBuffers(*buffer, refs, *result, shouldBe);
            ::release(result);
        }
        release(buffer);
    }

    /// Calls an edit of a string and checks the string and, when there is one, its copy.
    template <class Operation, class Model>
    void editedString(char const* name, Operation operation, Model model) {
        name_ = name;
        DString edited(given_);
        shared_ = oneIn(2);
        DString const copy = shared_ ? edited : DString(given_);
        string_view const shouldStay = given_;
        string const expected = outcomeOf([&] { return escaped(model().bytes); });
        string const is = outcomeOf([&] {
            operation(edited);
            return escaped({edited.data(), edited.length()});
        });
        check(is, expected);
        if (is.rfind("throws", 0) == 0 && string_view(edited.data(), edited.length()) != shouldStay)
            failed_ = "the string changed by a failure";
        if (string_view(copy.data(), copy.length()) != shouldStay) failed_ = "the copy changed";
    }

    void checkBuffers(DBuffer const& buffer, unsigned int refs, DBuffer const& result,
                      Edited const& shouldBe) {
        if (result.contents()[result.length] != '\0') failed_ = "no NUL behind the result";
        if (std::strcmp(result.className(), "DDBCSBuffer") != 0) failed_ = "the result is of another class";
        bool const isReceiver = &result == &buffer;
        bool const inPlace = shouldBe.where == Edited::Where::inPlace && refs < 2;
        if (!(isReceiver && inPlace) && textOf(buffer) != given_) failed_ = "the receiver changed";
        if (given_.empty()) return; // all empty buffers are one
        if (isReceiver != (inPlace || shouldBe.where == Edited::Where::unchanged))
            failed_ = isReceiver ? "the receiver came back" : "the receiver did not come back";
        if (buffer.refs != refs + (isReceiver ? 1 : 0)) failed_ = "references are miscounted";
    }

    Choices& choices_;
    Pool const& pool_;
    string given_;
    string first_;
    string second_;
    char pad_ = ' ';
    unsigned int a_ = 0;
    unsigned int b_ = 0;
    Function test_ = nullptr;
    DStringEnum::StripMode mode_ = DStringEnum::both;
    bool shared_ = false;
    char const* name_ = "";
    string failed_;
};

void Trial::search() {
    DBuffer* const buffer = receiver();
    Text const t(given_);
    Text const set(first_);
    std::unique_ptr<char[]> room;
    char const* const p = argument(first_, room);
    unsigned int const n = lengthOf(first_);
    unsigned int const from = start();
    unsigned int const inside = t.length == 0 ? 0 : 1 + b_ % t.length;
    auto const& multi = dynamic_cast<DDBCSBuffer&>(*buffer);
    switch (below(16)) {
    case 0:
        found(
            "indexOf", [&] { return buffer->indexOf(p, n, from); }, [&] { return indexOf(t, set, from); });
        break;
    case 1:
        found(
            "indexOfAnyOf", [&] { return buffer->indexOfAnyOf(p, n, from); },
            [&] { return indexOfAnyOf(t, set, from); });
        break;
    case 2:
        found(
            "indexOfAnyBut", [&] { return buffer->indexOfAnyBut(p, n, from); },
            [&] { return indexOfAnyBut(t, set, from); });
        break;
    case 3:
        found(
            "lastIndexOf", [&] { return buffer->lastIndexOf(p, n, from); },
            [&] { return lastIndexOf(t, set, from); });
        break;
    case 4:
        found(
            "lastIndexOfAnyOf", [&] { return buffer->lastIndexOfAnyOf(p, n, from); },
            [&] { return lastIndexOfAnyOf(t, set, from); });
        break;
    case 5:
        found(
            "lastIndexOfAnyBut", [&] { return buffer->lastIndexOfAnyBut(p, n, from); },
            [&] { return lastIndexOfAnyBut(t, set, from); });
        break;
    case 6:
        found(
            "startSearch", [&] { return buffer->startSearch(from, b_); },
            [&] { return startForward(t, from, b_); });
        break;
    case 7:
        found(
            "startBackwardsSearch", [&] { return buffer->startBackwardsSearch(from, b_); },
            [&] { return startBackward(t, from, b_); });
        break;
    case 8:
        found(
            "charType", [&] { return buffer->charType(inside); }, [&] { return typeOf(t, inside); });
        break;
    case 9:
        found(
            "prevCharLength", [&] { return multi.prevCharLength(inside + 1); },
            [&] { return previousLength(t, inside + 1); });
        break;
    case 10:
        if (inside == 0 || typeOf(t, inside) > 1) break;
        found(
            "isCharValid", [&] { return multi.isCharValid(inside, p, n) != 0; },
            [&] { return isMember(t, inside, set); });
        break;
    default:
        searchWithTest(*buffer, t);
    }
    if (textOf(*buffer) != given_) failed_ = "the text changed";
    release(buffer);
}

void Trial::searchWithTest(DBuffer const& buffer, Text const& t) {
    DStringTest const test(test_);
    unsigned int const from = a_;
    switch (below(7)) {
    case 0:
        return found(
            "indexOf(test)", [&] { return buffer.indexOf(test, from); },
            [&] { return indexOfAnyOf(t, test_, from); });
    case 1:
        return found(
            "indexOfAnyOf(test)", [&] { return buffer.indexOfAnyOf(test, from); },
            [&] { return indexOfAnyOf(t, test_, from); });
    case 2:
        return found(
            "indexOfAnyBut(test)", [&] { return buffer.indexOfAnyBut(test, from); },
            [&] { return indexOfAnyBut(t, test_, from); });
    case 3:
        return found(
            "lastIndexOf(test)", [&] { return buffer.lastIndexOf(test, from); },
            [&] { return lastIndexOfAnyOf(t, test_, from); });
    case 4:
        return found(
            "lastIndexOfAnyOf(test)", [&] { return buffer.lastIndexOfAnyOf(test, from); },
            [&] { return lastIndexOfAnyOf(t, test_, from); });
    case 5:
        return found(
            "lastIndexOfAnyBut(test)", [&] { return buffer.lastIndexOfAnyBut(test, from); },
            [&] { return lastIndexOfAnyBut(t, test_, from); });
    default:
        return found(
            "windexOfAnyBut",
            [&] { return dynamic_cast<DDBCSBuffer const&>(buffer).windexOfAnyBut(test, from); },
            [&] { return windexOfAnyBut(t, test_, from); });
    }
}

void Trial::edit() {
    Text const t(given_);
    Text const p(first_);
    Text const q(second_);
    std::unique_ptr<char[]> room1;
    std::unique_ptr<char[]> room2;
    char const* const x = argument(first_, room1);
    char const* const y = argument(second_, room2);
    unsigned int const n = lengthOf(first_);
    unsigned int const m = lengthOf(second_);
    DStringTest const test(test_);
    switch (below(16)) {
    case 0:
        return edited(
            "upperCase", [](DBuffer* b) { return b->upperCase(); }, [&] { return caseOf(t, true); });
    case 1:
        return edited(
            "lowerCase", [](DBuffer* b) { return b->lowerCase(); }, [&] { return caseOf(t, false); });
    case 2:
    case 3:
        return edited(
            "translate", [&](DBuffer* b) { return b->translate(x, n, y, m, pad_); },
            [&] { return translated(t, p, q, pad_); });
    case 4:
        return edited(
            "strip(set)", [&](DBuffer* b) { return b->strip(x, n, mode_); },
            [&] { return stripped(t, p, mode_); });
    case 5:
        return edited(
            "strip(test)", [&](DBuffer* b) { return b->strip(test, mode_); },
            [&] { return stripped(t, test_, mode_); });
    case 6:
        return edited(
            "reverse", [](DBuffer* b) { return b->reverse(); }, [&] { return reversed(t); });
    case 7:
        return edited(
            "overlayWith", [&](DBuffer* b) { return b->overlayWith(x, n, a_, pad_); },
            [&] { return overlaid(t, p, a_, pad_); });
    case 8:
        return edited(
            "leftJustify", [&](DBuffer* b) { return b->leftJustify(a_, pad_); },
            [&] { return leftJustified(t, a_, pad_); });
    case 9:
        return edited(
            "rightJustify", [&](DBuffer* b) { return b->rightJustify(a_, pad_); },
            [&] { return rightJustified(t, a_, pad_); });
    case 10:
        return edited(
            "insert", [&](DBuffer* b) { return b->insert(x, n, a_, pad_); },
            [&] { return inserted(t, p, a_, pad_); });
    case 11:
        return edited(
            "center", [&](DBuffer* b) { return b->center(a_, pad_); }, [&] { return centered(t, a_, pad_); });
    case 12:
        return edited(
            "remove", [&](DBuffer* b) { return b->remove(a_, b_); }, [&] { return removed(t, a_, b_); });
    case 13:
        return edited(
            "change", [&](DBuffer* b) { return b->change(x, n, y, m, a_, b_); },
            [&] { return changed(t, p, q, a_, b_); });
    case 14:
        return edited(
            "subString(start)", [&](DBuffer* b) { return b->subString(a_); },
            [&] { return Edited{remainOf(t, a_, ' ')}; });
    default:
        return edited(
            "subString(start, count)", [&](DBuffer* b) { return b->subString(a_, b_, pad_); },
            [&] { return Edited{subStringOf(t, a_, b_, pad_)}; });
    }
}

/// The same through a string, which takes the result in place of its own text; a copy of it must not notice.
void Trial::editString() {
    Text const t(given_);
    Text const p(first_);
    Text const q(second_);
    DStringTest const test(test_);
    switch (below(13)) {
    case 0:
        return editedString(
            "DString upperCase", [](DString& s) { s.upperCase(); }, [&] { return caseOf(t, true); });
    case 1:
        return editedString(
            "DString lowerCase", [](DString& s) { s.lowerCase(); }, [&] { return caseOf(t, false); });
    case 2:
        return editedString(
            "DString translate", [&](DString& s) { s.translate(first_, second_, pad_); },
            [&] { return translated(t, p, q, pad_); });
    case 3:
        return editedString(
            "DString strip(set)", [&](DString& s) { s.strip(first_, mode_); },
            [&] { return stripped(t, p, mode_); });
    case 4:
        return editedString(
            "DString strip(test)", [&](DString& s) { s.strip(test, mode_); },
            [&] { return stripped(t, test_, mode_); });
    case 5:
        return editedString(
            "DString reverse", [](DString& s) { s.reverse(); }, [&] { return reversed(t); });
    case 6:
        return editedString(
            "DString overlayWith", [&](DString& s) { s.overlayWith(first_, a_, pad_); },
            [&] { return overlaid(t, p, a_, pad_); });
    case 7:
        return editedString(
            "DString leftJustify", [&](DString& s) { s.leftJustify(a_, pad_); },
            [&] { return leftJustified(t, a_, pad_); });
    case 8:
        return editedString(
            "DString rightJustify", [&](DString& s) { s.rightJustify(a_, pad_); },
            [&] { return rightJustified(t, a_, pad_); });
    case 9:
        return editedString(
            "DString insert", [&](DString& s) { s.insert(first_, a_, pad_); },
            [&] { return inserted(t, p, a_, pad_); });
    case 10:
        return editedString(
            "DString center", [&](DString& s) { s.center(a_, pad_); }, [&] { return centered(t, a_, pad_); });
    case 11:
        return editedString(
            "DString remove", [&](DString& s) { s.remove(a_, b_); },
            [&] { return b_ == 0 ? same(t) : removed(t, a_, b_); });
    default:
        return editedString(
            "DString change", [&](DString& s) { s.change(first_, second_, a_, b_); },
            [&] { return changed(t, p, q, a_, b_); });
    }
}

class OperationsOnMultiByteText final : public RandomOperations {
public:
    explicit OperationsOnMultiByteText(Choices& choices, unsigned int poolSeed)
        : pool_(poolOf(poolSeed)), trial_(choices, pool_) {}

    bool runOne() override { return trial_.run(); }
    string report() const override { return trial_.report(); }

private:
    static Pool const& poolOf(unsigned int seed) {
        static Pool const pool = [seed] {
            SeededChoices choices(seed);
            return makePool(choices);
        }();
        return pool;
    }

    Pool const& pool_;
    Trial trial_;
};

} // namespace

std::unique_ptr<RandomOperations> operationsOnMultiByteText(Choices& choices, unsigned int poolSeed) {
    return std::make_unique<OperationsOnMultiByteText>(choices, poolSeed);
}
