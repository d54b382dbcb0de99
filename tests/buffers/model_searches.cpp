// The model of the searches in multi-byte text: those for bytes and sets of characters, and those by a test
// of each character.
#include "tests/buffers/model.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <cwchar>

namespace model {

namespace {

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

} // namespace

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

// For bytes and sets

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

// By a test

namespace {

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

} // namespace

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

} // namespace model
