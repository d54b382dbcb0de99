// Tests of a host that throw, or change or destroy the very string that is searched or stripped, harm
// nothing.
#include "tests/buffers/operation_support.h"

#include <functional>
#include <stdexcept>
#include <vector>

namespace {

using operations::contentsOf;
using operations::refsOf;

int callsBeforeHarm = 0;
std::function<void()> harm;

int harmful(int c) {
    if (callsBeforeHarm-- == 0) harm();
    return c == 'b' || c == ' ';
}

struct TestUser {
    char const* name;
    std::function<unsigned int(DString&, DStringTest const&)> use;
    unsigned int onOriginal; ///< The answer for "bbxbb bb".
};

std::vector<TestUser> const readers = {
    {"indexOf", [](DString& s, DStringTest const& t) { return s.indexOf(t, 3); }, 4},
    {"indexOfAnyOf", [](DString& s, DStringTest const& t) { return s.indexOfAnyOf(t, 3); }, 4},
    {"indexOfAnyBut", [](DString& s, DStringTest const& t) { return s.indexOfAnyBut(t); }, 3},
    {"lastIndexOf", [](DString& s, DStringTest const& t) { return s.lastIndexOf(t, 3); }, 2},
    {"lastIndexOfAnyOf", [](DString& s, DStringTest const& t) { return s.lastIndexOfAnyOf(t, 3); }, 2},
    {"lastIndexOfAnyBut", [](DString& s, DStringTest const& t) { return s.lastIndexOfAnyBut(t); }, 3},
    {"occurrencesOf", [](DString& s, DStringTest const& t) { return s.occurrencesOf(t); }, 7},
    {"includes", [](DString& s, DStringTest const& t) { return s.includes(t) ? 1u : 0u; }, 1},
};

constexpr char const* original = "bbxbb bb";

struct Harm {
    char const* name;
    std::function<void(DString&)> change;
};

std::vector<Harm> const harms = {
    {"assigns another text", [](DString& s) { s = DString("something else that is rather longer"); }},
    {"clears", [](DString& s) { s = DString(); }},
    {"moves away", [](DString& s) { DString const gone(std::move(s)); }},
    {"edits in place", [](DString& s) { s.reverse().upperCase(); }},
    {"writes through an element", [](DString& s) { s[1] = 'q'; }},
    {"appends", [](DString& s) { s += "0123456789012345678901234567890123456789"; }},
    {"appends a little", [](DString& s) { s += "+"; }},
    {"removes", [](DString& s) { s.remove(1); }},
};

TEST(HarmfulTest, ThatChangesTheStringItSearchesStillSeesTheTextThereWas) {
    for (TestUser const& reader : readers) {
        for (Harm const& kind : harms) {
            for (int calls = 0; calls < 3; ++calls) {
                DString text(original);
                callsBeforeHarm = calls;
                harm = [&] { kind.change(text); };
                EXPECT_EQ(reader.use(text, DStringTest(harmful)), reader.onOriginal)
                    << reader.name << " with a test that " << kind.name << " at call " << calls;
            }
        }
    }
}

TEST(HarmfulTest, ThatDestroysTheStringItSearchesHarmsNothing) {
    for (TestUser const& reader : readers) {
        auto text = std::make_optional<DString>(original);
        callsBeforeHarm = 0;
        harm = [&] { text.reset(); };
        EXPECT_EQ(reader.use(*text, DStringTest(harmful)), reader.onOriginal) << reader.name;
        EXPECT_FALSE(text.has_value());
    }
}

TEST(HarmfulTest, ThatThrowsLeavesTheStringItSearchesAlone) {
    for (TestUser const& reader : readers) {
        for (int calls = 0; calls < 2; ++calls) {
            DString text(original);
            DString const copy(text);
            callsBeforeHarm = calls;
            bool thrown = false;
            harm = [&] {
                thrown = true;
                throw std::runtime_error("harm");
            };
            DStringTest const test(harmful);
            try {
                reader.use(text, test);
                EXPECT_FALSE(thrown) << reader.name;
            } catch (std::runtime_error const&) {
            }
            EXPECT_EQ(text.data(), copy.data()) << reader.name;
            EXPECT_EQ(refsOf(text), 2u) << reader.name;
        }
    }
}

TEST(HarmfulTest, ThatChangesTheStringItStripsGivesTheStrippedTextThereWas) {
    for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both}) {
        char const* const expected = mode == DStringEnum::leading    ? "xbb bb"
                                     : mode == DStringEnum::trailing ? "bbx"
                                                                     : "x";
        for (Harm const& kind : harms) {
            for (int calls = 0; calls < 3; ++calls) {
                DString text(original);
                DString const untouched = calls == 1 ? text : DString();
                callsBeforeHarm = calls;
                harm = [&] { kind.change(text); };
                text.strip(DStringTest(harmful), mode);
                EXPECT_EQ(contentsOf(text), expected) << "with a test that " << kind.name;
                EXPECT_EQ(refsOf(text), 1u) << "with a test that " << kind.name;
                EXPECT_EQ(contentsOf(untouched), calls == 1 ? original : "");
            }
        }
    }
}

TEST(HarmfulTest, ThatThrowsLeavesTheStringItStripsAlone) {
    for (bool const shared : {false, true}) {
        DString text(original);
        DString const copy = shared ? text : DString();
        callsBeforeHarm = 1;
        harm = [] { throw std::runtime_error("harm"); };
        char const* const data = text.data();
        EXPECT_THROW(text.strip(DStringTest(harmful)), std::runtime_error);
        EXPECT_EQ(text.data(), data);
        EXPECT_EQ(contentsOf(text), original);
        EXPECT_EQ(refsOf(text), shared ? 2u : 1u);
    }
}

TEST(HarmfulTest, ThatChangesTheStringAndThenThrowsLeavesTheChange) {
    DString text(original);
    callsBeforeHarm = 1;
    harm = [&] {
        text = DString("changed");
        throw std::runtime_error("harm");
    };
    EXPECT_THROW(text.strip(DStringTest(harmful)), std::runtime_error);
    EXPECT_EQ(contentsOf(text), "changed");
    EXPECT_EQ(refsOf(text), 1u);
}

} // namespace
