// What the operations allocate: nothing when there is nothing to do or the text is edited in place, one block
// when a new text is made. And what happens when each of these allocations fails: no leak, and the string is
// what it was.
#include "tests/buffers/operation_support.h"
#include "tests/support/failing_allocations.h"

#include <functional>
#include <new>
#include <string>
#include <vector>

namespace {

using operations::contentsOf;
using operations::refsOf;

int isX(int c) { return c == 'x'; }
int isBlank(int c) { return c == ' '; }

struct Case {
    char const* name;
    std::string start;
    std::function<void(DString&)> run;
};

std::string repeated(char const* text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

std::string const longText = repeated("the quick brown fox ", 50);
// Long enough for products that are made by transforms, and such that are made of those.
std::string const longNumber = repeated("the quick brown fox ", 1700);
std::string const longDigits = repeated("1234567890", 8000);
std::string const nearMatches(30'000, 'a');
DStringTest const x(isX);
DStringTest const blank(isBlank);
DString const phrase("brown fox");
volatile unsigned int sink;

long allocationsOf(std::function<void(DString&)> const& run, DString& text) {
    long const before = allocations.made;
    run(text);
    return allocations.made - before;
}

void expectAllocations(Case const& c, long soleOwner, long shared) {
    {
        DString text(c.start);
        EXPECT_EQ(allocationsOf(c.run, text), soleOwner) << c.name << " of a sole owner";
    }
    DString text(c.start);
    DString const copy(text);
    EXPECT_EQ(allocationsOf(c.run, text), shared) << c.name << " of a shared text";
    EXPECT_EQ(contentsOf(copy), c.start) << c.name;
}

std::vector<Case> const reading = {
    {"indexOf", longText, [](DString& s) { sink = s.indexOf("fox") + s.indexOf('x') + s.indexOf(x); }},
    {"lastIndexOf", longText, [](DString& s) { sink = s.lastIndexOf("quick") + s.lastIndexOf('q'); }},
    {"set searches", longText,
     [](DString& s) {
         sink = s.indexOfAnyOf("xyz") + s.indexOfAnyBut("the") + s.lastIndexOfAnyOf("xyz") +
                s.lastIndexOfAnyBut("xof ");
     }},
    {"searches by a test", longText,
     [](DString& s) { sink = s.indexOfAnyBut(blank) + s.lastIndexOfAnyBut(blank) + s.lastIndexOf(x); }},
    {"occurrencesOf", longText,
     [](DString& s) { sink = s.occurrencesOf("o") + s.occurrencesOf('o') + s.occurrencesOf(x); }},
    {"isAbbrevFor", longText, [](DString& s) { sink = s.isAbbrevFor(s); }},
    {"classes", longText, [](DString& s) { sink = s.isPrintable() + s.isAlphabetic() + s.isASCII(); }},
    {"reading words", longText,
     [](DString& s) { sink = s.numWords() + s.indexOfWord(7) + s.lengthOfWord(9); }},
    {"reading elements", longText, [](DString& s) { sink = static_cast<DString const&>(s)[5] == 'q'; }},
    {"hash and conversion", longText, [](DString& s) { sink = std::hash<DString>()(s) != 0; }},
};

TEST(Allocations, AreNotNeededToReadAText) {
    for (Case const& c : reading)
        expectAllocations(c, 0, 0);
}

TEST(Allocations, AreNotNeededToMatchUnlessThePatternIsCollated) {
    DString text(longText);
    auto const match = [](DString& s) { sink = s.isLike("*fox*fo? ") + s.isLike("*x*y*z*"); };
    EXPECT_LE(allocationsOf(match, text), operations::switchIsOn() ? 4 : 0);
}

TEST(Allocations, AreNotNeededToCompareBytesAndAtMostTwoToCollate) {
    DString const text("abc");
    std::string const other = "abd";
    long const before = allocations.made;
    EXPECT_TRUE(text < other);
    EXPECT_TRUE(text == DString(text));
    EXPECT_LE(allocations.made - before, operations::switchIsOn() ? 2 : 0);
    DString const withNul(std::string_view("ab\0", 3));
    std::string_view const otherWithNul("ac\0", 3);
    long const again = allocations.made;
    EXPECT_TRUE(withNul < otherWithNul);
    EXPECT_EQ(allocations.made, again) << "texts that end in a NUL need no copy";
}

std::vector<Case> const idle = {
    {"upperCase", "ABC 123", [](DString& s) { s.upperCase(); }},
    {"lowerCase", "abc 123", [](DString& s) { s.lowerCase(); }},
    {"translate", longText, [](DString& s) { s.translate("XYZ", "abc").translate("", "x"); }},
    {"reverse", "a", [](DString& s) { s.reverse(); }},
    {"strip", "a b", [](DString& s) { s.strip().strip('x').strip(x).strip(""); }},
    {"change", longText, [](DString& s) { s.change("XX", "y").change("", "y").change("fox", "cat", 1, 0); }},
    {"insert and overlayWith", "abc", [](DString& s) { s.insert("", 2).overlayWith("", 2).overlayWith(""); }},
    {"justify", "abc", [](DString& s) { s.leftJustify(3).rightJustify(3).center(3); }},
    {"copy", "abc", [](DString& s) { s.copy(1); }},
    {"remove", "abc", [](DString& s) { s.remove(4).remove(2, 0).remove(9, 9); }},
    {"append", "abc", [](DString& s) { s += ""; }},
    {"removeWords", "a b", [](DString& s) { s.removeWords(0).removeWords(3).removeWords(1, 0); }},
    {"bit operators", "abc", [](DString& s) { (s &= "") |= DString(); }},
    {"operations on the empty string", "",
     [](DString& s) {
         s.upperCase().reverse().strip().copy(9).change("a", "b").c2x().c2b().c2d().x2c().d2c().space();
     }},
    {"empty results", "abc",
     [](DString& s) {
         DString const none = s.subString(9);
         DString const word = s.word(2);
         DString const zero = DString(s).leftJustify(0);
         DString const stripped = DString(s).strip("abc");
         DString const invalid = DString(s).d2c();
     }},
    {"a copy of the string", longText, [](DString& s) { DString const copy(s.asString()); }},
};

TEST(Allocations, AreNotNeededWhereThereIsNothingToDo) {
    for (Case const& c : idle)
        expectAllocations(c, 0, 0);
}

std::vector<Case> const inPlace = {
    {"upperCase", longText, [](DString& s) { s.upperCase(); }},
    {"lowerCase", "ABC", [](DString& s) { s.lowerCase(); }},
    {"translate", longText, [](DString& s) { s.translate("abc", "xyz"); }},
    {"reverse", longText, [](DString& s) { s.reverse(); }},
    {"change to the same length", longText, [](DString& s) { s.change("fox", "cat"); }},
    {"writing an element", longText, [](DString& s) { s[3] = 'x'; }},
    {"bit operators", longText, [](DString& s) { s ^= "key"; }},
    {"prepareToChange and write", longText, [](DString& s) { s.prepareToChange(), s[1] = 'z'; }},
};

TEST(Allocations, AreNotNeededInPlaceAndOneForACopy) {
    for (Case const& c : inPlace)
        expectAllocations(c, 0, 1);
}

std::vector<Case> const changing = {
    {"strip", "  " + longText, [](DString& s) { s.strip(); }},
    {"strip by a test", "xxabcxx", [](DString& s) { s.strip(x); }},
    {"change to a shorter text", longText, [](DString& s) { s.change("fox", "ox"); }},
    {"change to a longer text", longText, [](DString& s) { s.change("fox", "foxes"); }},
    {"insert", longText, [](DString& s) { s.insert("abc", 7); }},
    {"overlayWith", longText, [](DString& s) { s.overlayWith("abc", 7); }},
    {"leftJustify", longText, [](DString& s) { s.leftJustify(3000); }},
    {"rightJustify", longText, [](DString& s) { s.rightJustify(3000); }},
    {"center", longText, [](DString& s) { s.center(3000); }},
    {"copy", longText, [](DString& s) { s.copy(3); }},
    {"remove", longText, [](DString& s) { s.remove(5, 7); }},
    {"subString", longText, [](DString& s) { DString const part = s.subString(5, 70); }},
    {"word", longText, [](DString& s) { DString const part = s.word(5); }},
    {"words", longText, [](DString& s) { DString const part = s.words(5, 9); }},
    {"removeWords", longText, [](DString& s) { s.removeWords(3, 5); }},
    {"space", longText, [](DString& s) { s.space(2, '-'); }},
    {"c2x", longText, [](DString& s) { s.c2x(); }},
    {"x2c", longDigits, [](DString& s) { s.x2c(); }},
    {"c2b", longText, [](DString& s) { s.c2b(); }},
    {"b2c", repeated("10", 300), [](DString& s) { s.b2c(); }},
    {"c2d of a short number", "abcd", [](DString& s) { s.c2d(); }},
    {"d2c of a short number", "1234567", [](DString& s) { s.d2c(); }},
    {"decimalMath", longDigits, [](DString& s) { s.decimalMath(7); }},
    {"binaryMath", longText, [](DString& s) { s.binaryMath(7); }},
    {"complement", longText, [](DString& s) { DString const other = ~s; }},
    {"concatenation", longText, [](DString& s) { DString const other = s + "abc"; }},
    {"static upperCase", longText, [](DString& s) { DString const other = DString::upperCase(s); }},
    {"writing past the end", longText, [](DString& s) { s[2000] = 'x'; }},
};

TEST(Allocations, AreOneForANewText) {
    for (Case const& c : changing)
        expectAllocations(c, 1, 1);
}

// Made at once: g++ with link-time optimisation mistakes sums of strings for overflows.
std::string const nearlyMatching = [] {
    std::string pattern(17004, 'a');
    pattern.replace(0, 1, "*").replace(9001, 1, "?").replace(17002, 2, "Q*");
    return pattern;
}();

std::vector<Case> const working = {
    {"change of many occurrences", repeated("a.", 5000), [](DString& s) { s.change("a", "bc"); }},
    {"change of many occurrences to the same length", repeated("a.", 5000),
     [](DString& s) { s.change("a", "b"); }},
    {"change with a part of the text", "abcabc", [](DString& s) { s.change("a", 1, s.data() + 1, 1, 1, 9); }},
    {"bits with a part of the text", "abcabc", [](DString& s) { s ^= std::string_view(s).substr(1, 2); }},
    {"findPhrase", longText, [](DString& s) { sink = s.findPhrase(phrase, 3); }},
    {"c2d of a number of a kilobyte", longText, [](DString& s) { s.c2d(); }},
    {"c2d of a long number", longNumber, [](DString& s) { s.c2d(); }},
    {"d2c of a long number", longDigits, [](DString& s) { s.d2c(); }},
    {"comparison", longText, [](DString& s) { sink = s < "the quick brown cat"; }},
    {"isLike", longText, [](DString& s) { sink = s.isLike("*fox*fox?"); }},
    {"isLike where a pattern nearly matches everywhere", nearMatches,
     [](DString& s) { sink = s.isLike(nearlyMatching); }},
};

TEST(Allocations, ForWorkingSpaceAreGivenBack) {
    for (std::vector<Case> const* const cases : {&reading, &idle, &inPlace, &changing, &working}) {
        for (Case const& c : *cases) {
            long const before = allocations.live;
            {
                DString text(c.start);
                DString const copy(text);
                c.run(text);
                DString other(c.start);
                c.run(other);
            }
            EXPECT_EQ(allocations.live, before) << c.name;
        }
    }
}

/// Fails the n-th allocation of the operation, for every n there is.
void expectFailuresToHarmNothing(Case const& c, bool shared) {
    for (long n = 0; n < 1000; ++n) {
        DString text(c.start);
        DString const copy = shared ? text : DString();
        char const* const data = text.data();
        unsigned int const refs = refsOf(text);
        long const live = allocations.live;
        bool failed = false;
        allocations.countdown = n;
        try {
            c.run(text);
        } catch (std::bad_alloc const&) {
            failed = true;
        }
        bool const reached = allocations.countdown < 0;
        allocations.countdown = -1;
        if (failed) {
            EXPECT_EQ(text.data(), data) << c.name << " after allocation " << n;
            EXPECT_EQ(refsOf(text), refs) << c.name << " after allocation " << n;
            EXPECT_EQ(contentsOf(text), c.start) << c.name << " after allocation " << n;
            EXPECT_EQ(allocations.live, live) << c.name << " after allocation " << n;
        }
        EXPECT_EQ(contentsOf(copy), shared ? c.start : "") << c.name << " after allocation " << n;
        if (!reached) {
            EXPECT_FALSE(failed) << c.name;
            return;
        }
    }
    ADD_FAILURE() << c.name << " allocates without end";
}

TEST(Allocations, ThatFailLeaveTheStringAndItsCopiesAloneAndLeakNothing) {
    for (std::vector<Case> const* const cases : {&reading, &idle, &inPlace, &changing, &working}) {
        for (Case const& c : *cases) {
            expectFailuresToHarmNothing(c, false);
            expectFailuresToHarmNothing(c, true);
        }
    }
}

TEST(Allocations, OfDecimalConversionsAreSmallMultiplesOfTheText) {
    for (unsigned int const n : {200U, 2000U, 16'384U, 65'536U}) {
        DString bytes(std::string(n, '\x7F'));
        DString digits(std::string(n, '9'));
        allocations.failingSize = 8 * std::size_t{n};
        EXPECT_NO_THROW(bytes.c2d()) << n;
        EXPECT_NO_THROW(digits.d2c()) << n;
        allocations.failingSize = std::numeric_limits<std::size_t>::max();
    }
}

TEST(Collation, WithoutMemoryForItsCopiesSortsTheStringBefore) {
    if (!operations::switchIsOn()) {
        EXPECT_FALSE(DString("b") < "a");
        return;
    }
    // There is nothing to collate with, so the answer is that of a text that sorts before.
    DString const text("b");
    for (long n = 0; n < 2; ++n) {
        allocations.countdown = n;
        bool const before = text < "a";
        allocations.countdown = -1;
        EXPECT_TRUE(before) << n;
    }
}

} // namespace
