// Every operation of strings on random texts, beside a plain model on std::string: odd starts and counts,
// embedded NULs and high bytes, sole and shared receivers, arguments that point into the receiver. After each
// operation all strings are compared with their models, so that a change of a copy shows.
#include "tests/string/random_operations.h"

#include "tests/buffers/operation_support.h"
#include "tests/string/model.h"

#include <array>
#include <cctype>
#include <sstream>

namespace {

using model::Result;
using std::string;
using std::string_view;

constexpr unsigned int most = 0xFFFFFFFF;

struct Slot {
    DString string;
    std::string model;
};

struct Argument {
    string_view given;  ///< May point into the receiver.
    std::string wanted; ///< What it was before the operation.
    std::string own;    ///< The bytes of a text of its own.
};

using Function = int (*)(int);

constexpr std::array<Function, 5> predicates = {
    [](int c) -> int { return c >= '0' && c <= '9'; }, [](int c) -> int { return c < 0; },
    [](int c) -> int { return c == ' ' || (c >= '\t' && c <= '\r'); }, [](int c) -> int { return c == 0; },
    [](int c) -> int { return c & 1; }};

class Trial {
public:
    explicit Trial(Choices& choices) : choices_(choices) {}

    unsigned int below(unsigned int n) { return choices_.below(n); }
    bool oneIn(unsigned int n) { return choices_.oneIn(n); }

    /// Prepares the strings and arguments of the next operation.
    void prepare() {
        for (Slot& slot : slots_)
            if (oneIn(12) || slot.model.size() > 2000) set(slot, randomText());
        if (oneIn(5)) share();
        receiver_ = &slots_[below(static_cast<unsigned int>(slots_.size()))];
        before_ = receiver_->model;
        failed_.clear();
        wrong_.clear();
        right_.clear();
        choose(a);
        choose(b);
        predicate = predicates[below(predicates.size())];
        pad = "-.\0\xFF "[below(5)];
    }

    /// Whether every string is what its model says.
    bool allAsExpected() {
        for (Slot const& slot : slots_) {
            if (slot.string.length() != slot.model.size() ||
                std::memcmp(slot.string.data(), slot.model.data(), slot.model.size()) != 0) {
                failed_ = &slot == receiver_ ? "the result differs" : "another string changed";
                wrong_ = ops::contentsOf(slot.string);
                right_ = slot.model;
            } else if (slot.string.data()[slot.model.size()] != '\0') {
                failed_ = "there is no NUL behind the text";
            }
        }
        return failed_.empty();
    }

    string report() const {
        std::ostringstream out;
        out << failed_ << "\n  receiver " << ::testing::PrintToString(before_) << "\n  arguments "
            << ::testing::PrintToString(a.wanted) << ' ' << ::testing::PrintToString(b.wanted)
            << "\n  numbers";
        for (unsigned int const number : numbers_)
            out << ' ' << number;
        out << "\n  pad " << ::testing::PrintToString(pad);
        if (!wrong_.empty() || !right_.empty())
            out << "\n  is " << ::testing::PrintToString(wrong_) << "\n  should be "
                << ::testing::PrintToString(right_);
        return out.str();
    }

    DString& s() { return receiver_->string; }
    string const& m() const { return before_; }

    /// A start of a search: anything.
    unsigned int start() { return noted(oneIn(4) ? choices_.any() : edge()); }
    /// A width, position or count of something to make: small, or so large that it fails.
    unsigned int amount() {
        if (oneIn(10)) return noted(most - below(20));
        return noted(edge());
    }
    unsigned int few() { return noted(oneIn(8) ? most - below(3) : below(7)); }

    template <class Value>
    void same(Value const& is, Value const& shouldBe) {
        if (is == shouldBe) return;
        failed_ = "the answer differs";
        wrong_ = ::testing::PrintToString(is);
        right_ = ::testing::PrintToString(shouldBe);
    }

    /// Edits the receiver, which must become what the model says, or fail when that says nothing.
    template <class Edit>
    void edit(Result const& shouldBe, Edit operation) {
        withOverflow(shouldBe, [&] {
            operation(s());
            if (shouldBe) receiver_->model = *shouldBe;
        });
    }

    /// Calls with the argument as one of the kinds of text.
    template <class Call>
    void as(Argument const& argument, Call call) {
        switch (below(4)) {
        case 0:
            return call(std::string(argument.given));
        case 1:
            return call(DString(argument.given));
        case 2:
            if (argument.given.find('\0') == string_view::npos) {
                string const terminated(argument.given);
                return call(terminated.c_str());
            }
            return call(argument.given);
        default:
            return call(argument.given);
        }
    }

    Argument a;
    Argument b;
    Function predicate = nullptr;
    char pad = ' ';

    bool accepts(char c) const { return predicate(static_cast<signed char>(c)) != 0; }
    DStringTest test() const { return DStringTest(predicate); }

private:
    template <class Action>
    void withOverflow(Result const& shouldBe, Action action) {
        bool overflowed = false;
        try {
            action();
        } catch (DInvalidRequest const& thrown) {
            overflowed = thrown.errorId() == 1010;
        }
        if (overflowed == shouldBe.has_value()) failed_ = overflowed ? "it failed" : "it did not fail";
    }

    unsigned int noted(unsigned int number) {
        numbers_[nextNumber_++ % numbers_.size()] = number;
        return number;
    }

    unsigned int edge() {
        auto const length = static_cast<unsigned int>(before_.size());
        switch (below(8)) {
        case 0:
            return 0;
        case 1:
            return 1;
        case 2:
            return length;
        case 3:
            return length + 1;
        case 4:
            return most;
        default:
            return below(length + 4);
        }
    }

    string randomText() {
        static std::array<string, 11> const alphabets = {"ab",
                                                         "abc ",
                                                         " \t\n\v\f\rxy",
                                                         "01",
                                                         "0123456789",
                                                         "0123456789abcdefABCDEF",
                                                         string("\0a\x80", 3),
                                                         "\xE4\xC4"
                                                         "aAzZ\xFF\x80-",
                                                         "a*?",
                                                         "aZ-z",
                                                         ""};
        string const& alphabet = alphabets[below(alphabets.size())];
        unsigned int const kind = below(50);
        unsigned int const length = kind == 0   ? below(1500)
                                    : kind < 5  ? below(200)
                                    : kind < 20 ? below(40)
                                                : below(12);
        string text(length, '\0');
        for (char& c : text)
            c = alphabet.empty() ? static_cast<char>(below(256)) : alphabet[below(ops::lengthOf(alphabet))];
        return text;
    }

    static void set(Slot& slot, string const& text) {
        slot.string = DString(text);
        slot.model = text;
    }

    void share() {
        Slot const& from = slots_[below(static_cast<unsigned int>(slots_.size()))];
        Slot& to = slots_[below(static_cast<unsigned int>(slots_.size()))];
        to.string = from.string;
        to.model = from.model;
    }

    void choose(Argument& argument) {
        unsigned int const kind = below(6);
        string_view const receiver = s();
        if (kind < 2) { // a part of the receiver
            unsigned int const from = below(ops::lengthOf(receiver) + 1);
            unsigned int const length =
                below(std::min(ops::lengthOf(receiver) - from, oneIn(4) ? most : 4U) + 1);
            argument.given = receiver.substr(from, length);
        } else {
            argument.own = kind == 2 ? slots_[0].model : randomText();
            if (kind > 3 && argument.own.size() > 3) argument.own.resize(1 + below(3));
            argument.given = argument.own;
        }
        argument.wanted = string(argument.given);
    }

    Choices& choices_;
    std::array<Slot, 4> slots_;
    Slot* receiver_ = slots_.data();
    string before_;
    string failed_;
    string wrong_;
    string right_;
    std::array<unsigned int, 3> numbers_{};
    std::size_t nextNumber_ = 0;
};

struct Operation {
    char const* name;
    void (*run)(Trial&);
};

// Reading

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
    unsigned int const expected = model::count(next, from, ops::lengthOf(r.a.wanted));
    r.same(r.s().occurrencesOf(r.a.given.data(), ops::lengthOf(r.a.given), from), expected);
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
    int const expected = sign(model::compare(r.m(), r.a.wanted, ops::switchIsOn()));
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
    bool const expected = fits && model::compare(m, r.a.wanted.substr(0, m.size()), ops::switchIsOn()) == 0;
    r.as(r.a, [&](auto const& full) { r.same(r.s().isAbbrevFor(full, least), expected); });
}

void isLike(Trial& r) {
    char const run = r.oneIn(3) ? r.pad : '*';
    char const one = r.oneIn(3) ? 'a' : '?';
    string pattern = r.oneIn(2) ? r.a.wanted : r.m();
    for (char& c : pattern)
        if (r.oneIn(4)) c = r.oneIn(2) ? run : one;
    bool const expected =
        model::compare(r.m(), pattern, ops::switchIsOn()) == 0 || model::isLike(r.m(), pattern, run, one);
    r.same(r.s().isLike(pattern, run, one), expected);
    r.same(r.s().isLike(pattern.data(), ops::lengthOf(pattern), run, one), expected);
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
    if (from == 0 && !ops::switchIsOn()) expected += ' ';
    r.same(ops::contentsOf(r.s().subString(from)), expected);
}

// Editing

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
    r.same(ops::contentsOf(DString::upperCase(r.s())), mapped(r.m(), 'a', 'z', -32));
}
void reverse(Trial& r) {
    r.edit(string(r.m().rbegin(), r.m().rend()), [](DString& s) { s.reverse(); });
}

void translate(Trial& r) {
    r.edit(model::translate(r.m(), r.a.wanted, r.b.wanted, r.pad), [&](DString& s) {
        s.translate(r.a.given.data(), ops::lengthOf(r.a.given), r.b.given.data(), ops::lengthOf(r.b.given),
                    r.pad);
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
    unsigned int const count = r.oneIn(2) ? most : r.few();
    string const expected = model::change(r.m(), r.a.wanted, r.b.wanted, from, count);
    r.edit(expected, [&](DString& s) {
        if (r.oneIn(4))
            s = DString::change(s, DString(r.a.given), DString(r.b.given), from, count);
        else if (r.oneIn(2))
            s.change(r.a.given, r.b.given, from, count);
        else
            s.change(r.a.given.data(), ops::lengthOf(r.a.given), r.b.given.data(), ops::lengthOf(r.b.given),
                     from, count);
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
    r.edit(model::remove(r.m(), from, most), [&](DString& s) { s.remove(from); });
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

// Words

void countWords(Trial& r) { r.same(r.s().numWords(), static_cast<unsigned int>(model::words(r.m()).size())); }

void readWord(Trial& r) {
    unsigned int const n = r.few();
    std::vector<model::Word> const words = model::words(r.m());
    auto const at = [&](unsigned int i) { return i == 0 || i > words.size() ? model::Word() : words[i - 1]; };
    r.same(ops::contentsOf(r.s().word(n)), at(n == 0 ? 1 : n).text);
    r.same(r.s().lengthOfWord(n), ops::lengthOf(at(n).text));
    r.same(r.s().indexOfWord(n), at(n).position);
    unsigned int const from = r.start();
    unsigned int const counted = r.below(3);
    r.same(r.s().indexOfWord(n, from, counted), model::indexOfWord(r.m(), n, from, counted));
}

void cutWords(Trial& r) {
    unsigned int const first = r.few();
    unsigned int const count = r.few();
    r.edit(model::wordsFrom(r.m(), first, count), [&](DString& s) { s = s.words(first, count); });
}
void removeWords(Trial& r) {
    unsigned int const first = r.few();
    unsigned int const count = r.few();
    r.edit(model::removeWords(r.m(), first, count), [&](DString& s) { s.removeWords(first, count); });
}
void space(Trial& r) {
    unsigned int const n = r.few();
    r.edit(model::space(r.m(), n, r.pad), [&](DString& s) { s.space(n, r.pad); });
}

void findPhrase(Trial& r) {
    unsigned int const from = r.few();
    std::vector<model::Word> const words = model::words(r.m());
    string phrase = r.a.wanted;
    if (!words.empty() && r.oneIn(2)) {
        unsigned int const at = r.below(static_cast<unsigned int>(words.size()));
        phrase = "\t" + words[at].text;
        if (at + 1 < words.size()) phrase += "  " + words[at + 1].text;
    }
    r.same(r.s().findPhrase(phrase, from, DString::wordIndex), model::findPhrase(r.m(), phrase, from, false));
    r.same(r.s().findPhrase(phrase, from, DString::charIndex), model::findPhrase(r.m(), phrase, from, true));
}

// Radix and bits

constexpr std::size_t longestNumber = 300; ///< Longhand arithmetic takes its time.

void c2x(Trial& r) {
    r.edit(model::c2x(r.m()), [](DString& s) { s.c2x(); });
}
void x2c(Trial& r) {
    r.edit(model::x2c(r.m()), [](DString& s) { s.x2c(); });
}
void c2b(Trial& r) {
    r.edit(model::bitsOf(r.m()), [](DString& s) { s.c2b(); });
}
void b2c(Trial& r) {
    string const expected = model::consistsOf(r.m(), "01") ? model::ofBits(r.m()) : string();
    r.edit(expected, [](DString& s) { s.b2c(); });
}
void c2d(Trial& r) {
    if (r.m().size() <= longestNumber) r.edit(model::c2d(r.m()), [](DString& s) { s.c2d(); });
}
void d2c(Trial& r) {
    if (r.m().size() <= longestNumber) r.edit(model::d2c(r.m()), [](DString& s) { s.d2c(); });
}

void combine(Trial& r) {
    string const& m = r.m();
    string const& operand = r.a.wanted;
    switch (r.below(4)) {
    case 0:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x & y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s &= text; }); });
    case 1:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x | y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s |= text; }); });
    case 2:
        return r.edit(model::combined(m, operand, [](int x, int y) { return x ^ y; }),
                      [&](DString& s) { r.as(r.a, [&](auto const& text) { s ^= text; }); });
    default:
        return r.edit(model::combined(operand, m, [](int x, int y) { return x ^ y; }),
                      [&](DString& s) { s = r.a.given ^ s; });
    }
}
void combineNewly(Trial& r) {
    string const& m = r.m();
    string const& operand = r.a.wanted;
    r.as(r.a, [&](auto const& text) {
        r.same(ops::contentsOf(r.s() & text),
               model::combined(m, operand, [](int x, int y) { return x & y; }));
        r.same(ops::contentsOf(r.s() | text),
               model::combined(m, operand, [](int x, int y) { return x | y; }));
        r.same(ops::contentsOf(r.s() ^ text),
               model::combined(m, operand, [](int x, int y) { return x ^ y; }));
    });
}
void complement(Trial& r) {
    r.edit(model::combined(r.m(), "\xFF", [](int x, int y) { return x ^ y; }), [](DString& s) { s = ~s; });
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
                                    {"subString to the end", cutToTheEnd},
                                    {"upperCase", upperCase},
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
                                    {"concatenation", join},
                                    {"numWords", countWords},
                                    {"word", readWord},
                                    {"words", cutWords},
                                    {"removeWords", removeWords},
                                    {"space", space},
                                    {"findPhrase", findPhrase},
                                    {"c2x", c2x},
                                    {"x2c", x2c},
                                    {"c2b", c2b},
                                    {"b2c", b2c},
                                    {"c2d", c2d},
                                    {"d2c", d2c},
                                    {"bit assignment", combine},
                                    {"bit operators", combineNewly},
                                    {"complement", complement}};

class OperationsOnStrings final : public RandomOperations {
public:
    explicit OperationsOnStrings(Choices& choices) : choices_(choices), trial_(choices) {}

    bool runOne() override {
        trial_.prepare();
        operation_ = &operations[choices_.below(std::size(operations))];
        operation_->run(trial_);
        return trial_.allAsExpected();
    }
    string report() const override { return string(operation_->name) + ": " + trial_.report(); }

private:
    ops::LogOfExceptions log_;
    Choices& choices_;
    Trial trial_;
    Operation const* operation_ = operations;
};

} // namespace

std::unique_ptr<RandomOperations> operationsOnStrings(Choices& choices) {
    return std::make_unique<OperationsOnStrings>(choices);
}
