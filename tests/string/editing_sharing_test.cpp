// The protocol of editing: copies of a string stay what they are, a sole owner's text is edited in place, and
// arguments may be part of the text.
#include "tests/buffers/operation_support.h"

#include <functional>
#include <vector>

namespace {

using operations::contentsOf;
using operations::isB;
using operations::refsOf;

using Edit = std::function<void(DString&)>;

struct NamedEdit {
    char const* name;
    Edit edit;
    bool inPlace; ///< Whether a sole owner's text is changed where it is.
};

std::vector<NamedEdit> const changes = {
    {"upperCase", [](DString& s) { s.upperCase(); }, true},
    {"lowerCase", [](DString& s) { s.lowerCase(); }, true},
    {"reverse", [](DString& s) { s.reverse(); }, true},
    {"translate", [](DString& s) { s.translate("abc", "xyz"); }, true},
    {"change to the same length", [](DString& s) { s.change("ab", "xy"); }, true},
    {"change to another length", [](DString& s) { s.change("ab", "x"); }, false},
    {"strip of white space", [](DString& s) { s.strip(); }, false},
    {"strip of a set", [](DString& s) { s.strip(' '); }, false},
    {"strip by a test", [](DString& s) { s.strip(DStringTest([](int c) -> int { return c == ' '; })); },
     false},
    {"overlayWith", [](DString& s) { s.overlayWith("xy", 2); }, false},
    {"insert", [](DString& s) { s.insert("xy", 2); }, false},
    {"leftJustify", [](DString& s) { s.leftJustify(30); }, false},
    {"rightJustify", [](DString& s) { s.rightJustify(30); }, false},
    {"center", [](DString& s) { s.center(30); }, false},
    {"copy", [](DString& s) { s.copy(2); }, false},
    {"remove", [](DString& s) { s.remove(2, 1); }, false},
    {"remove to the end", [](DString& s) { s.remove(2); }, false},
};

constexpr char const* changeable = " abcABC ab ";

TEST(Editing, OfASoleOwnerChangesTheTextWhereItIsIfTheBufferCan) {
    for (NamedEdit const& change : changes) {
        DString text(changeable);
        char const* const data = text.data();
        change.edit(text);
        EXPECT_NE(contentsOf(text), changeable) << change.name;
        EXPECT_TRUE(!change.inPlace || text.data() == data) << change.name;
        EXPECT_EQ(refsOf(text), 1u) << change.name;
    }
}

TEST(Editing, LeavesCopiesOfTheStringAlone) {
    for (NamedEdit const& change : changes) {
        DString text(changeable);
        DString const copy(text);
        change.edit(text);
        EXPECT_NE(contentsOf(text), changeable) << change.name;
        EXPECT_EQ(contentsOf(copy), changeable) << change.name;
        EXPECT_NE(text.data(), copy.data()) << change.name;
        EXPECT_EQ(refsOf(copy), 1u) << change.name;
        EXPECT_EQ(refsOf(text), 1u) << change.name;
    }
}

TEST(Editing, ThatChangesNothingKeepsTheBufferAndItsCount) {
    std::vector<NamedEdit> const idle = {
        {"upperCase", [](DString& s) { s.upperCase(); }, true},
        {"strip", [](DString& s) { s.strip().strip('x').strip(DStringTest(isB)); }, true},
        {"overlayWith", [](DString& s) { s.overlayWith("", 3); }, true},
        {"insert", [](DString& s) { s.insert("", 5); }, true},
        {"justify", [](DString& s) { s.leftJustify(5).rightJustify(5).center(5); }, true},
        {"copy", [](DString& s) { s.copy(1); }, true},
        {"change", [](DString& s) { s.change("", "x").change("A", "x", 1, 0).change("z", "x"); }, true},
        {"translate", [](DString& s) { s.translate("", "x").translate("z", "x"); }, true},
        {"remove", [](DString& s) { s.remove(1, 0).remove(6).remove(6, 3); }, true},
    };
    for (NamedEdit const& nothing : idle) {
        DString text("A12-Z");
        char const* const data = text.data();
        nothing.edit(text);
        EXPECT_EQ(text.data(), data) << nothing.name;
        EXPECT_EQ(refsOf(text), 1u) << nothing.name;
        DString const copy(text);
        nothing.edit(text);
        EXPECT_EQ(text.data(), data) << nothing.name;
        EXPECT_EQ(refsOf(text), 2u) << nothing.name;
    }
}

TEST(Remove, OfNothingReturnsTheStringUnchangedWhereTheBufferWouldMakeANewOne) {
    DString text("abcd");
    char const* const data = text.data();
    text.remove(2, 0);
    EXPECT_EQ(text.data(), data);
    operations::Owned const result(operations::bufferOf(text)->remove(2, 0));
    EXPECT_NE(result->contents(), data);
    EXPECT_EQ(result.text(), "abcd");
}

TEST(Editing, TakesArgumentsThatPointIntoTheString) {
    using String = std::string;
    auto const alias = [](String const& start, auto edit) {
        DString text(start);
        edit(text, text.data());
        return contentsOf(text);
    };
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.insert(p + 1, 3, 2); }), "abbcacabc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.overlayWith(p + 2, 4, 1); }), "cabcbc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p, 1, p + 1, 2); }), "bcbcbcbc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p, 2, p + 1, 2); }), "bccbcc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.change(p + 3, 3, p, 3); }), "abcabc");
    EXPECT_EQ(alias("abcabc", [](DString& s, char const* p) { s.translate(p, 3, p + 1, 3); }), "bcabca");
    EXPECT_EQ(alias("xyaxx", [](DString& s, char const* p) { s.strip(p, 2, DStringEnum::both); }), "a");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.insert(s, 1); }), "aabb");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.overlayWith(s, 2); }), "aab");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.change(s, s); }), "ab");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.change("a", s); }), "abb");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.strip(s); }), "");
    EXPECT_EQ(alias("ab", [](DString& s, char const*) { s.translate(s, s); }), "ab");
    EXPECT_EQ(alias("abc", [](DString& s, char const* p) { s.insert(std::string_view(p + 1, 2)); }), "bcabc");
    DString const text("abc");
    EXPECT_TRUE(text.isLike(text));
    EXPECT_TRUE(text.isAbbrevFor(text));
    EXPECT_EQ(text.indexOf(text), 1u);
    EXPECT_EQ(text.occurrencesOf(std::string_view(text).substr(1)), 1u);
}

} // namespace
