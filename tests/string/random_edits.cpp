// Random edits of strings.
#include "tests/string/random_trial.h"

#include <algorithm>
#include <cctype>

namespace random_strings {
namespace {

string mapped(string text, char from, char to, int by) {
    for (char& c : text)
        if (c >= from && c <= to) c = static_cast<char>(c + by);
    return text;
}

void upperCase(Trial& r) {
    r.edit(mapped(r.m(), 'a', 'z', -32), [](DString& s) { s.upperCase(); });
}
void lowerCase(Trial& r) {
    r.edit(mapped(r.m(), 'A', 'Z', 32), [](DString& s) { s.lowerCase(); });
}
void upperCaseOfCopy(Trial& r) {
    r.same(operations::contentsOf(DString::upperCase(r.s())), mapped(r.m(), 'a', 'z', -32));
}
void reverse(Trial& r) {
    r.edit(string(r.m().rbegin(), r.m().rend()), [](DString& s) { s.reverse(); });
}

void translate(Trial& r) {
    r.edit(model::translate(r.m(), r.a.wanted, r.b.wanted, r.pad), [&](DString& s) {
        s.translate(r.a.given.data(), operations::lengthOf(r.a.given), r.b.given.data(),
                    operations::lengthOf(r.b.given), r.pad);
    });
}

void strip(Trial& r) {
    auto const mode = static_cast<DStringEnum::StripMode>(r.below(4));
    bool const front = mode != DStringEnum::trailing;
    bool const back = mode != DStringEnum::leading;
    if (r.oneIn(3)) {
        auto const in = [&](char c) { return r.accepts(c); };
        r.edit(model::strip(r.m(), in, front, back), [&](DString& s) { s.strip(r.test(), mode); });
    } else if (r.oneIn(3)) {
        auto const in = [](char c) { return std::isspace(static_cast<signed char>(c)) != 0; };
        r.edit(model::strip(r.m(), in, true, true), [&](DString& s) { s.strip(); });
    } else {
        auto const in = [&](char c) { return model::isMember(r.a.wanted, c); };
        r.edit(model::strip(r.m(), in, front, back),
               [&](DString& s) { r.as(r.a, [&](auto const& set) { s.strip(set, mode); }); });
    }
}

void overlay(Trial& r) {
    unsigned int const position = r.amount();
    r.edit(model::overlayWith(r.m(), r.a.wanted, position, r.pad),
           [&](DString& s) { r.as(r.a, [&](auto const& text) { s.overlayWith(text, position, r.pad); }); });
}

void insert(Trial& r) {
    unsigned int const position = r.amount();
    r.edit(model::insert(r.m(), r.a.wanted, position, r.pad),
           [&](DString& s) { r.as(r.a, [&](auto const& text) { s.insert(text, position, r.pad); }); });
}

void leftJustify(Trial& r) {
    unsigned int const width = r.amount();
    r.edit(model::leftJustify(r.m(), width, r.pad), [&](DString& s) { s.leftJustify(width, r.pad); });
}
void rightJustify(Trial& r) {
    unsigned int const width = r.amount();
    r.edit(model::rightJustify(r.m(), width, r.pad), [&](DString& s) { s.rightJustify(width, r.pad); });
}
void center(Trial& r) {
    unsigned int const width = r.amount();
    r.edit(model::center(r.m(), width, r.pad), [&](DString& s) {
        if (r.oneIn(2))
            s.center(width, r.pad);
        else
            s = DString::center(s, width, r.pad);
    });
}

void copy(Trial& r) {
    unsigned int const times = r.few();
    r.edit(model::copy(r.m(), times), [&](DString& s) { s.copy(times); });
}

void change(Trial& r) {
    unsigned int const from = r.start();
    unsigned int const count = r.oneIn(2) ? operations::farEnd : r.few();
    string const expected = model::change(r.m(), r.a.wanted, r.b.wanted, from, count);
    r.edit(expected, [&](DString& s) {
        if (r.oneIn(4))
            s = DString::change(s, DString(r.a.given), DString(r.b.given), from, count);
        else if (r.oneIn(2))
            s.change(r.a.given, r.b.given, from, count);
        else
            s.change(r.a.given.data(), operations::lengthOf(r.a.given), r.b.given.data(),
                     operations::lengthOf(r.b.given), from, count);
    });
}

void changeToTheSameLength(Trial& r) {
    std::size_t const length = std::min(r.a.wanted.size(), r.b.wanted.size());
    for (Argument* const argument : {&r.a, &r.b}) {
        argument->given = argument->given.substr(0, length);
        argument->wanted.resize(length);
    }
    change(r);
}

void remove(Trial& r) {
    unsigned int const from = r.start();
    unsigned int const count = r.start();
    r.edit(model::remove(r.m(), from, count), [&](DString& s) { s.remove(from, count); });
}
void removeToTheEnd(Trial& r) {
    unsigned int const from = r.start();
    r.edit(model::remove(r.m(), from, operations::farEnd), [&](DString& s) { s.remove(from); });
}

void writeElement(Trial& r) {
    unsigned int const index = r.amount();
    std::size_t const offset = index == 0 ? 0 : index - 1;
    Result expected;
    if (offset + 1 < model::limit) {
        string text = r.m();
        if (offset >= text.size()) text.resize(offset + 1, ' ');
        text[offset] = r.pad;
        expected = text;
    }
    r.edit(expected, [&](DString& s) { s[index] = r.pad; });
}

void append(Trial& r) {
    r.edit(r.m() + r.a.wanted, [&](DString& s) { r.as(r.a, [&](auto const& text) { s += text; }); });
}
void join(Trial& r) {
    r.edit(r.a.wanted + r.m() + r.b.wanted, [&](DString& s) { s = r.a.given + s + r.b.given; });
}

constexpr Operation operations[] = {{"upperCase", upperCase},
                                    {"lowerCase", lowerCase},
                                    {"upperCase of a copy", upperCaseOfCopy},
                                    {"reverse", reverse},
                                    {"translate", translate},
                                    {"strip", strip},
                                    {"overlayWith", overlay},
                                    {"insert", insert},
                                    {"leftJustify", leftJustify},
                                    {"rightJustify", rightJustify},
                                    {"center", center},
                                    {"copy", copy},
                                    {"change", change},
                                    {"change to the same length", changeToTheSameLength},
                                    {"remove", remove},
                                    {"remove to the end", removeToTheEnd},
                                    {"writing an element", writeElement},
                                    {"append", append},
                                    {"concatenation", join}};

} // namespace

std::span<Operation const> edits() { return operations; }

} // namespace random_strings
