// What the code of the cheat-sheet's rows finds around it, and how a row is checked: its code is the function
// run of a class that has the names which the page uses.
#ifndef KELCL_TESTS_DOCS_ROWS_H
#define KELCL_TESTS_DOCS_ROWS_H

#include <kelcl/kelcl.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

// A loop of the page does nothing with what it goes through.
#pragma GCC diagnostic ignored "-Wunused-variable"

/// What the names of the page stand for. All texts have more than i + n bytes: past the end subString pads,
/// as the page says.
struct Values {
    char const* s;
    char const* t;
    char const* u;
    unsigned i;
    unsigned n;
    char c;
};

inline Values const allValues[] = {
    {"a banana, an ananas", "an", "en", 3, 4, 'a'},
    {"12751275", "27", "3", 2, 3, '5'},
    {"nothing of it\there ", "xyz", "", 0, 12, 'x'},
};

template <class String, class Number>
struct Names {
    explicit Names(Values const& values)
        : s(values.s), t(values.t), u(values.u), p(std::string("*") + values.t + "*"), i(values.i),
          n(values.n), c(values.c), list{s, t, u}, in(std::string(values.s) + "\nanother line") {}

    String s, t, u, p;
    Number i, n;
    char c;
    std::vector<String> list;
    std::istringstream in;
    Number rounds = 0;
};
using Ours = Names<DString, unsigned>;
struct Theirs : Names<std::string, std::string::size_type> {
    using Names::Names;
    static constexpr std::string::size_type npos = std::string::npos;
    static constexpr bool givesPosition = false;
};
struct TheirPosition : Theirs {
    using Theirs::Theirs;
    static constexpr bool givesPosition = true;
};

/// What a row's code gives, in a form of which two can be compared. Ranges have none.
template <class Result>
std::optional<std::string> shown(Result const& result) {
    if constexpr (std::is_same_v<Result, char>)
        return std::string(1, result);
    else if constexpr (std::is_arithmetic_v<Result>)
        return std::to_string(result);
    else if constexpr (std::is_convertible_v<Result const&, std::string_view>)
        return std::string(std::string_view(result));
    else
        return std::nullopt;
}

template <class Number>
std::optional<std::string> shown(std::optional<Number> const& number) {
    return number ? shown(*number) : "none";
}

/// Code that gives nothing, or only the stream that it read from, has changed s.
template <class Row, class Result = decltype(std::declval<Row&>().run())>
constexpr bool givesNothing =
    std::is_void_v<Result> || std::is_base_of_v<std::istream, std::remove_reference_t<Result>>;

template <class Row>
std::optional<std::string> outcomeOf(Row& row) {
    if constexpr (givesNothing<Row>) {
        row.run();
        return shown(row.s);
    } else {
        return shown(row.run());
    }
}

template <class Row>
std::string outcomeOfTheirs(Row& row) {
    try {
        if constexpr (Row::givesPosition) return std::to_string(row.run() == row.npos ? 0 : row.run() + 1);
        return outcomeOf(row).value();
    } catch (std::invalid_argument const&) { // a number that is none
        return "none";
    }
}

/// Both give the same, positions and truth values in their own way, and leave the same in s.
template <class TheirRow, class OurRow>
void expectSame() {
    for (Values const& values : allValues) {
        TheirRow theirs(values);
        OurRow ours(values);
        std::string const expected = outcomeOfTheirs(theirs);
        std::optional<std::string> outcome = outcomeOf(ours);
        if (!outcome) continue;
        if constexpr (std::is_same_v<decltype(theirs.run()), bool>) outcome = *outcome == "0" ? "0" : "1";
        EXPECT_EQ(*outcome, expected) << "s is \"" << values.s << '"';
        if constexpr (!givesNothing<TheirRow>) {
            EXPECT_EQ(std::string(ours.s), theirs.s);
        }
    }
}

template <class OurRow>
void expectRuns() {
    for (Values const& values : allValues) {
        OurRow ours(values);
        EXPECT_NO_THROW(outcomeOf(ours)) << "s is \"" << values.s << '"';
    }
}

#endif
