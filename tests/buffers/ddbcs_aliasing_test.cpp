// Operations of multi-byte strings whose arguments lie in the very text that they change.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dstring.h>

#include <functional>
#include <string>

namespace {

using std::string;

string contentsOf(DString const& text) { return {static_cast<char const*>(text), text.length()}; }

/// Does it with a text of its own and with a shared one, the national-language switch off and on.
void expect(string const& start, std::function<void(DString&)> const& operation, string const& expected) {
    for (int const state : {0, 1}) {
        int const before = std::exchange(DString::fgI18NState, state);
        DString alone(start);
        operation(alone);
        EXPECT_EQ(contentsOf(alone), expected) << "switch " << state;
        DString shared(start);
        DString const other(shared);
        operation(shared);
        EXPECT_EQ(contentsOf(shared), expected) << "shared, switch " << state;
        EXPECT_EQ(contentsOf(other), start) << "switch " << state;
        DString::fgI18NState = before;
    }
}

class Aliasing : public testing::Test {
protected:
    string const two = mb::samples().two.bytes;
    string const start = two + "b" + two;
};

TEST_F(Aliasing, WithTheWholeTextAsTheArgument) {
    expect(
        start, [](DString& s) { s += s; }, start + start);
    expect(
        start,
        [](DString& s) {
            DString const& same = s;
            s = same;
        },
        start);
    expect(
        start, [](DString& s) { s.insert(s, 3); }, two + "b" + start + two);
    expect(
        start, [](DString& s) { s.insert(s); }, start + start);
    expect(
        start, [](DString& s) { s.overlayWith(s, 4); }, two + "b" + start);
    expect(
        start, [](DString& s) { s.change(s, DString("xy")); }, "xy");
    expect(
        start, [](DString& s) { s.change(DString("b"), s); }, two + start + two);
    expect(
        start, [](DString& s) { s.translate(s, s); }, start);
    expect(
        start, [](DString& s) { s.strip(s); }, "");
    expect(
        start, [](DString& s) { s.remove(s.indexOf(s), 3); }, two);
}

TEST_F(Aliasing, WithAPieceOfTheTextAsTheArgument) {
    auto const piece = [](DString const& s) {
        return static_cast<char const*>(s) + 2;
    }; // "b" and the second character
    expect(
        start, [&](DString& s) { s += piece(s); }, start + "b" + two);
    expect(
        start, [&](DString& s) { s = piece(s); }, "b" + two);
    expect(
        start, [&](DString& s) { s.insert(piece(s), 2); }, two + "b" + two + "b" + two);
    expect(
        start, [&](DString& s) { s.overlayWith(piece(s), 3); }, start);
    expect(
        start, [&](DString& s) { s.change(piece(s), "xy"); }, two + "xy");
    expect(
        start, [&](DString& s) { s.change(s.subString(1, 2), piece(s)); }, "b" + two + "bb" + two);
    expect(
        start, [&](DString& s) { s.translate(piece(s), "yz"); }, "zyz");
    expect(
        start, [&](DString& s) { s.strip(piece(s)); }, "");
}

} // namespace
