// Random operations that read strings: searches, comparison, matching, classes, elements and substrings.
#include "tests/string/random_trial.h"

#include <algorithm>
#include <cctype>

namespace random_strings {
namespace {

void searchText(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    DString const& s = r.s();
    r.as(r.a, [&](auto const& text) {
        r.same(s.indexOf(text, from), model::indexOf(m, r.a.wanted, from));
        r.same(s.lastIndexOf(text, from), model::lastIndexOf(m, r.a.wanted, from));
        r.same(s.includes(text), model::indexOf(m, r.a.wanted, 1) != 0);
    });
}

void searchSet(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    DString const& s = r.s();
    auto const in = [&](char c) { return model::isMember(r.a.wanted, c); };
    auto const out = [&](char c) { return !model::isMember(r.a.wanted, c); };
    r.as(r.a, [&](auto const& set) {
        r.same(s.indexOfAnyOf(set, from), model::indexOfAccepted(m, in, from));
        r.same(s.indexOfAnyBut(set, from), model::indexOfAccepted(m, out, from));
        r.same(s.lastIndexOfAnyOf(set, from), model::lastIndexOfAccepted(m, in, from));
        r.same(s.lastIndexOfAnyBut(set, from), model::lastIndexOfAccepted(m, out, from));
    });
}

void searchTest(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    DString const& s = r.s();
    auto const in = [&](char c) { return r.accepts(c); };
    auto const out = [&](char c) { return !r.accepts(c); };
    DStringTest const test = r.test();
    r.same(s.indexOf(test, from), model::indexOfAccepted(m, in, from));
    r.same(s.indexOfAnyOf(test, from), model::indexOfAccepted(m, in, from));
    r.same(s.indexOfAnyBut(test, from), model::indexOfAccepted(m, out, from));
    r.same(s.lastIndexOf(test, from), model::lastIndexOfAccepted(m, in, from));
    r.same(s.lastIndexOfAnyOf(test, from), model::lastIndexOfAccepted(m, in, from));
    r.same(s.lastIndexOfAnyBut(test, from), model::lastIndexOfAccepted(m, out, from));
}

void searchCharacter(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    char const c = r.a.wanted.empty() ? r.pad : r.a.wanted[0];
    string const one(1, c);
    DString const& s = r.s();
    r.same(s.indexOf(c, from), model::indexOf(m, one, from));
    r.same(s.lastIndexOf(c, from), model::lastIndexOf(m, one, from));
    r.same(s.indexOfAnyBut(c, from), model::indexOfAccepted(
                                         m, [c](char x) { return x != c; }, from));
    r.same(s.lastIndexOfAnyBut(c, from), model::lastIndexOfAccepted(
                                             m, [c](char x) { return x != c; }, from));
    r.same(s.occurrencesOf(c, from),
           model::count([&](unsigned int at) { return model::indexOf(m, one, at); }, from, 1));
}

void countMatches(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    auto const next = [&](unsigned int at) { return model::indexOf(m, r.a.wanted, at); };
    unsigned int const expected = model::count(next, from, operations::lengthOf(r.a.wanted));
    r.same(r.s().occurrencesOf(r.a.given.data(), operations::lengthOf(r.a.given), from), expected);
    r.as(r.a, [&](auto const& text) { r.same(r.s().occurrencesOf(text, from), expected); });
    r.same(r.s().occurrencesOf(r.test(), from), model::count(
                                                    [&](unsigned int at) {
                                                        return model::indexOfAccepted(
                                                            m, [&](char c) { return r.accepts(c); }, at);
                                                    },
                                                    from, 1));
}

int sign(int value) { return value == 0 ? 0 : value < 0 ? -1 : 1; }

void compareTexts(Trial& r) {
    int const expected = sign(model::compare(r.m(), r.a.wanted, operations::switchIsOn()));
    DString const& s = r.s();
    r.as(r.a, [&](auto const& text) {
        r.same(s == text, expected == 0);
        r.same(s != text, expected != 0);
        r.same(s < text, expected < 0);
        r.same(s <= text, expected <= 0);
        r.same(s > text, expected > 0);
        r.same(s >= text, expected >= 0);
    });
    string_view const left = r.a.given;
    r.same(left == s, expected == 0);
    r.same(left<s, expected> 0);
    r.same(left >= s, expected <= 0);
}

void abbreviates(Trial& r) {
    unsigned int const least = r.start();
    string const& m = r.m();
    bool const fits = r.a.wanted.size() >= m.size() && least <= m.size();
    bool const expected =
        fits && model::compare(m, r.a.wanted.substr(0, m.size()), operations::switchIsOn()) == 0;
    r.as(r.a, [&](auto const& full) { r.same(r.s().isAbbrevFor(full, least), expected); });
}

void isLike(Trial& r) {
    char const run = r.oneIn(3) ? r.pad : '*';
    char const one = r.oneIn(3) ? 'a' : '?';
    string pattern = r.oneIn(2) ? r.a.wanted : r.m();
    for (char& c : pattern)
        if (r.oneIn(4)) c = r.oneIn(2) ? run : one;
    bool const expected = model::compare(r.m(), pattern, operations::switchIsOn()) == 0 ||
                          model::isLike(r.m(), pattern, run, one);
    r.same(r.s().isLike(pattern, run, one), expected);
    r.same(r.s().isLike(pattern.data(), operations::lengthOf(pattern), run, one), expected);
}

void classify(Trial& r) {
    using Query = bool (DString::*)() const;
    static constexpr std::array<std::pair<Query, Function>, 9> byLocale = {
        {{&DString::isAlphanumeric, std::isalnum},
         {&DString::isAlphabetic, std::isalpha},
         {&DString::isControl, std::iscntrl},
         {&DString::isGraphics, std::isgraph},
         {&DString::isLowerCase, std::islower},
         {&DString::isPrintable, std::isprint},
         {&DString::isPunctuation, std::ispunct},
         {&DString::isUpperCase, std::isupper},
         {&DString::isWhiteSpace, std::isspace}}};
    string const& m = r.m();
    for (auto const& [query, function] : byLocale) {
        auto const member = [f = function](char c) { return f(static_cast<signed char>(c)) != 0; };
        r.same((r.s().*query)(), !m.empty() && std::all_of(m.begin(), m.end(), member));
    }
    r.same(r.s().isDigits(), !m.empty() && model::consistsOf(m, "0123456789"));
    r.same(r.s().isHexDigits(), !m.empty() && model::consistsOf(m, "0123456789abcdefABCDEF"));
    r.same(r.s().isBinaryDigits(), !m.empty() && model::consistsOf(m, "01"));
    r.same(r.s().isASCII(),
           !m.empty() && std::all_of(m.begin(), m.end(), [](signed char c) { return c >= 0; }));
}

void readElement(Trial& r) {
    unsigned int const index = r.start();
    std::size_t const offset = index == 0 ? 0 : index - 1;
    DString const& s = r.s();
    bool threw = false;
    try {
        char const c = s[index];
        r.same(offset < r.m().size(), true);
        if (offset < r.m().size()) r.same(c, r.m()[offset]);
    } catch (DInvalidRequest const& thrown) {
        threw = thrown.errorId() == 1011;
    }
    r.same(threw, offset >= r.m().size());
}

void cut(Trial& r) {
    unsigned int const from = r.start();
    unsigned int const count = r.amount();
    Result const expected = model::subString(r.m(), from, count, r.pad);
    r.edit(expected, [&](DString& s) { s = s.subString(from, count, r.pad); });
}

void cutToTheEnd(Trial& r) {
    unsigned int const from = r.start();
    string const& m = r.m();
    string expected = from > m.size() ? string() : m.substr(from == 0 ? 0 : from - 1);
    if (from == 0 && !operations::switchIsOn()) expected += ' ';
    r.same(operations::contentsOf(r.s().subString(from)), expected);
}

constexpr Operation operations[] = {{"search for a text", searchText},
                                    {"search for a set", searchSet},
                                    {"search by a test", searchTest},
                                    {"search for a character", searchCharacter},
                                    {"occurrencesOf", countMatches},
                                    {"comparison", compareTexts},
                                    {"isAbbrevFor", abbreviates},
                                    {"isLike", isLike},
                                    {"classes", classify},
                                    {"reading an element", readElement},
                                    {"subString", cut},
                                    {"subString to the end", cutToTheEnd}};

} // namespace

std::span<Operation const> searches() { return operations; }

} // namespace random_strings
