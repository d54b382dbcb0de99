// One random operation on strings and its check against the plain model: the strings with their models, the
// arguments, and what differed. The operations are in random_searches.cpp, random_edits.cpp, random_words.cpp
// and random_radix.cpp.
#ifndef KELCL_TESTS_STRING_RANDOM_TRIAL_H
#define KELCL_TESTS_STRING_RANDOM_TRIAL_H

#include "tests/buffers/operation_support.h"
#include "tests/string/model.h"
#include "tests/support/choices.h"

#include <algorithm>
#include <array>
#include <span>
#include <sstream>

namespace random_strings {

using model::Result;
using std::string;
using std::string_view;

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

inline constexpr std::array<Function, 5> predicates = {
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
                wrong_ = operations::contentsOf(slot.string);
                right_ = slot.model;
            } else if (slot.string.data()[slot.model.size()] != '\0') {
                failed_ = "there is no terminating NUL";
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
        if (oneIn(10)) return noted(operations::farEnd - below(20));
        return noted(edge());
    }
    unsigned int few() { return noted(oneIn(8) ? operations::farEnd - below(3) : below(7)); }

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
            return operations::farEnd;
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
            c = alphabet.empty() ? static_cast<char>(below(256))
                                 : alphabet[below(operations::lengthOf(alphabet))];
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
            unsigned int const from = below(operations::lengthOf(receiver) + 1);
            unsigned int const length = below(
                std::min(operations::lengthOf(receiver) - from, oneIn(4) ? operations::farEnd : 4U) + 1);
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

// The operations, in families.
std::span<Operation const> searches();
std::span<Operation const> edits();
std::span<Operation const> wordOperations();
std::span<Operation const> radixOperations();

} // namespace random_strings

#endif
