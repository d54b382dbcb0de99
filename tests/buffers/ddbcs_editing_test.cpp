// Edits of the multi-byte buffer: the byte path and the wide path side by side, what comes in place of cut
// characters, which buffer comes back, and what a failure leaves behind.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dstring.h>

#include <climits>
#include <cwctype>
#include <functional>
#include <string>
#include <vector>

namespace {

using mb::Owned;
using mb::SwitchAt;
using ops::Failure;
using ops::failureOf;
using ops::SharedWith;
using std::string;

constexpr int off = 0;
constexpr int on = 1;

int isBlank(int c) { return c == ' '; }
int isAnything(int) { return 1; }
int throwsOut(int) { throw 5; }

Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}

/// Calls an edit and gives the text of what it returned.
template <class Edit>
string after(string const& text, Edit edit) {
    Owned const owned = mb::buffer(text);
    Owned const result(edit(*owned));
    EXPECT_STREQ(result->className(), "DDBCSBuffer");
    EXPECT_EQ(result->contents()[result->length], '\0');
    return result.text();
}

/// Whether an edit returns its receiver, with one reference more.
template <class Edit>
bool returnsItself(string const& text, Edit edit) {
    Owned const owned = mb::buffer(text);
    Owned const result(edit(*owned));
    EXPECT_EQ(owned->refs, result.get() == owned.get() ? 2U : 1U);
    return result.get() == owned.get();
}

string upper(string const& text) {
    return after(text, [](DBuffer& b) { return b.upperCase(); });
}
string lower(string const& text) {
    return after(text, [](DBuffer& b) { return b.lowerCase(); });
}
string translate(string const& text, string const& from, string const& to, char pad) {
    return after(text, [&](DBuffer& b) {
        return b.translate(from.data(), mb::lengthOf(from), to.data(), mb::lengthOf(to), pad);
    });
}
string strip(string const& text, string const& set, DStringEnum::StripMode mode) {
    return after(text, [&](DBuffer& b) { return b.strip(set.data(), mb::lengthOf(set), mode); });
}
string strip(string const& text, int (*test)(int), DStringEnum::StripMode mode) {
    return after(text, [&](DBuffer& b) { return b.strip(DStringTest(test), mode); });
}
string reverse(string const& text) {
    return after(text, [](DBuffer& b) { return b.reverse(); });
}
string overlay(string const& text, string const& data, unsigned int position, char pad) {
    return after(text,
                 [&](DBuffer& b) { return b.overlayWith(data.data(), mb::lengthOf(data), position, pad); });
}
string insert(string const& text, string const& data, unsigned int position, char pad) {
    return after(text, [&](DBuffer& b) { return b.insert(data.data(), mb::lengthOf(data), position, pad); });
}
string leftJustify(string const& text, unsigned int width, char pad) {
    return after(text, [&](DBuffer& b) { return b.leftJustify(width, pad); });
}
string center(string const& text, unsigned int width, char pad) {
    return after(text, [&](DBuffer& b) { return b.center(width, pad); });
}
string change(string const& text, string const& from, string const& to, unsigned int start,
              unsigned int count) {
    return after(text, [&](DBuffer& b) {
        return b.change(from.data(), mb::lengthOf(from), to.data(), mb::lengthOf(to), start, count);
    });
}

/// Runs the body with each character of several bytes that the locale has, and the number of its bytes.
template <class Body>
void forEachCharacter(Body body) {
    ASSERT_FALSE(mb::samples().longCharacters().empty());
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        SCOPED_TRACE(mb::hex(sample.bytes));
        body(sample.bytes, mb::lengthOf(sample.bytes));
    }
}

template <class Body>
void inBothStates(Body body) {
    for (int const state : {off, on}) {
        SCOPED_TRACE(state == off ? "switch off" : "switch on");
        SwitchAt const at(state);
        body();
    }
}

// Case

TEST(MultiByteCase, WithTheSwitchOffOnlyAsciiLettersThatAreWholeCharactersChange) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        EXPECT_EQ(upper("az" + c + "Z1m"), "AZ" + c + "Z1M");
        EXPECT_EQ(lower("AZ" + c + "z1M"), "az" + c + "z1m");
    });
}

TEST(MultiByteCase, TrailBytesThatEqualLettersStayInBothStates) {
    inBothStates([] {
        // Of the locales here, these have such characters; in the others no byte of a character is a letter.
        mb::Sample const& trail = mb::samples().asciiTrail; // with the letter A
        string const c = trail.exists() ? trail.bytes.substr(0, 1) + 'a' : mb::samples().wide.bytes;
        EXPECT_EQ(upper("a" + c + "b"), "A" + c + "B");
        EXPECT_EQ(lower("A" + mb::samples().wide.bytes + "B"), "a" + mb::samples().wide.bytes + "b");
    });
}

TEST(MultiByteCase, WithTheSwitchOnEveryCharacterGoesThroughTheLocale) {
    // A Greek letter that all these encodings have, and their own capital of it.
    string const small = mb::bytesOf(0x3B1);
    string const capital = mb::bytesOf(0x391);
    ASSERT_FALSE(small.empty() || capital.empty());
    {
        SwitchAt const at(on);
        EXPECT_EQ(upper("a" + small + "B"), "A" + capital + "B");
        EXPECT_EQ(lower("a" + capital + "B"), "a" + small + "b");
    }
    SwitchAt const at(off);
    EXPECT_EQ(upper("a" + small + "B"), "A" + small + "B");
    EXPECT_EQ(lower("a" + capital + "B"), "a" + capital + "b");
}

TEST(MultiByteCase, WithTheSwitchOffASoleOwnerIsChangedInPlaceAndASharedOneIsNot) {
    SwitchAt const at(off);
    string const two = mb::samples().two.bytes;
    {
        Owned const sole = mb::buffer("a" + two);
        Owned const result(sole->upperCase());
        EXPECT_EQ(result.get(), sole.get());
        EXPECT_EQ(sole->refs, 2U);
        EXPECT_EQ(sole.text(), "A" + two);
    }
    Owned const shared = mb::buffer("A" + two);
    SharedWith const other(shared);
    Owned const result(shared->lowerCase());
    EXPECT_NE(result.get(), shared.get());
    EXPECT_EQ(shared->refs, 2U);
    EXPECT_EQ(shared.text(), "A" + two);
    EXPECT_EQ(result.text(), "a" + two);
}

TEST(MultiByteCase, NothingToChangeGivesTheReceiverWithTheSwitchOffAndACopyWithItOn) {
    string const two = mb::samples().wide.bytes;
    auto const edit = [](DBuffer& b) { return b.upperCase(); };
    {
        SwitchAt const at(off);
        EXPECT_TRUE(returnsItself("A" + two, edit));
        EXPECT_TRUE(returnsItself("", edit));
    }
    SwitchAt const at(on);
    EXPECT_FALSE(returnsItself("A" + two, edit));
    EXPECT_TRUE(returnsItself("", edit));
}

TEST(MultiByteCase, OtherCaseThatTheEncodingLacksFailsAndLeavesTheReceiver) {
    SwitchAt const at(on);
    unsigned int lacking = 0;
    auto const tryCase = [&lacking](wchar_t c, std::wint_t (*map)(std::wint_t), DBuffer* (DBuffer::*edit)()) {
        string const bytes = mb::bytesOf(c);
        if (bytes.empty() || !mb::bytesOf(static_cast<wchar_t>(map(static_cast<std::wint_t>(c)))).empty())
            return;
        ++lacking;
        Owned const text = mb::buffer("a" + bytes);
        Failure const wanted{"DInvalidRequest", 0, true, "Kel Class Library", "dnlsutil", 880, 1, 1, ""};
        Failure const failure = failureOf([&] { Owned const lost((*text.*edit)()); });
        EXPECT_EQ(failure, wanted);
        EXPECT_EQ(failure.text, "cvtWCS2MBS");
        EXPECT_EQ(text.text(), "a" + bytes);
        EXPECT_EQ(text->refs, 1U);
    };
    for (wchar_t c = 0x80; c < 0xD800; ++c) {
        tryCase(c, std::towupper, &DBuffer::upperCase);
        tryCase(c, std::towlower, &DBuffer::lowerCase);
    }
    // The two that have all of Unicode lack nothing, and EUC-TW has few letters, in both cases; each of the
    // others lacks some.
    bool const hasAll = mb::isUtf8() || mb::localeModeIs("gb18030") || mb::localeModeIs("euctw");
    EXPECT_EQ(lacking == 0, hasAll) << lacking;
}

// Translate

TEST(MultiByteTranslate, ReplacesWholeCharactersByThoseAtTheSamePlace) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate("a" + c + "b", "ab", "xy", '.'), "x" + c + "y");
            EXPECT_EQ(translate("a" + c + "b", c, "x", '.'), "axb");
            EXPECT_EQ(translate("a" + c + "b" + c, "b" + c, c + "b", '.'), "ab" + c + "b");
            EXPECT_EQ(translate("a" + c + "a", "a", c, '.'), c + c + c);
        });
    });
}

TEST(MultiByteTranslate, CharactersWithoutACounterpartBecomeThePad) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate("ab" + c, "ab" + c, "x", '.'), "x..");
            EXPECT_EQ(translate("ab" + c, c + "ab", c, '.'), ".." + c);
            EXPECT_EQ(translate(c + c, c, "", '.'), "..");
        });
    });
}

TEST(MultiByteTranslate, CharacterListedTwiceUsesItsFirstPlace) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(translate(c + "a", c + "a" + c + "a", "xyzw", '.'), "xy");
            EXPECT_EQ(translate("a", "ab" + c + "a", c, '.'), c);
        });
    });
}

TEST(MultiByteTranslate, WithoutHitsStillGivesANewBuffer) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        EXPECT_FALSE(returnsItself("a" + two, [](DBuffer& b) { return b.translate("xy", 2, "zw", 2, ' '); }));
        EXPECT_FALSE(returnsItself("a" + two, [](DBuffer& b) { return b.translate("", 0, "", 0, ' '); }));
        EXPECT_EQ(translate("a" + two, "xy", "zw", ' '), "a" + two);
        EXPECT_EQ(translate("", "xy", "zw", ' '), "");
    });
}

TEST(MultiByteTranslate, LeadByteAloneInTheSearchSetLeavesCharactersAlone) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        EXPECT_EQ(translate("a" + c, c.substr(0, 1), "x", '.'), "a" + c);
        EXPECT_EQ(translate("a" + c, "a" + c.substr(0, 1), "xy", '.'), "x" + c);
    });
}

TEST(MultiByteTranslate, TruncatedCharactersAreBytesOfTheirOwnWithTheSwitchOff) {
    SwitchAt const at(off);
    string const bad = mb::samples().invalid;
    EXPECT_EQ(translate("a" + bad, bad, "x", '.'), "ax");
    EXPECT_EQ(translate("ab", "b", bad, '.'), "a" + bad);
}

TEST(MultiByteTranslate, NulIsTranslatedToo) {
    inBothStates([] {
        string const nul(1, '\0');
        string const two = mb::samples().two.bytes;
        EXPECT_EQ(translate("a" + nul + two, nul, two, '.'), "a" + two + two);
        EXPECT_EQ(translate("ab", "b", nul, '.'), "a" + nul);
    });
}

// Strip

TEST(MultiByteStrip, TakesWholeCharactersOffTheEndsThatTheModeNames) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            string const text = "  " + c + "a" + c + " ";
            EXPECT_EQ(strip(text, " ", DStringEnum::leading), c + "a" + c + " ");
            EXPECT_EQ(strip(text, " ", DStringEnum::trailing), "  " + c + "a" + c);
            EXPECT_EQ(strip(text, " ", DStringEnum::both), c + "a" + c);
            EXPECT_EQ(strip(text, " " + c, DStringEnum::both), "a");
            EXPECT_EQ(strip(text, " " + c, DStringEnum::leading), "a" + c + " ");
            EXPECT_EQ(strip(text, " " + c, DStringEnum::trailing), "  " + c + "a");
            EXPECT_EQ(strip(text, isBlank, DStringEnum::leading), c + "a" + c + " ");
            EXPECT_EQ(strip(text, isBlank, DStringEnum::trailing), "  " + c + "a" + c);
            EXPECT_EQ(strip(text, isBlank, DStringEnum::both), c + "a" + c);
            EXPECT_EQ(strip(text, isBlank, static_cast<DStringEnum::StripMode>(7)), c + "a" + c);
            EXPECT_EQ(strip("a" + c, "a", DStringEnum::both), c);
        });
    });
}

TEST(MultiByteStrip, LastByteOfACharacterIsNoMember) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        string const tail = "x" + c.substr(c.size() - 1);
        EXPECT_EQ(strip("a" + c, tail, DStringEnum::trailing), "a" + c);
        EXPECT_EQ(strip("a" + c, tail, DStringEnum::both), "a" + c);
    });
}

TEST(MultiByteStrip, OfEverythingGivesTheSharedEmptyBuffer) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            for (auto const mode : {DStringEnum::leading, DStringEnum::both}) {
                Owned const text = mb::buffer(" " + c + " ");
                string const set = " " + c;
                DBuffer* const empty = text->null();
                unsigned int const refs = empty->refs;
                Owned const bySet(text->strip(set.data(), mb::lengthOf(set), mode));
                EXPECT_EQ(bySet.get(), empty);
                EXPECT_EQ(empty->refs, refs + 1);
                Owned const byTest(text->strip(DStringTest(isAnything), mode));
                EXPECT_EQ(byTest.get(), empty);
                EXPECT_EQ(empty->refs, refs + 2);
            }
            EXPECT_EQ(strip(" " + c, " " + c, DStringEnum::trailing), "");
            EXPECT_EQ(strip(" " + c, isAnything, DStringEnum::trailing), "");
        });
    });
}

TEST(MultiByteStrip, NothingToStripGivesTheReceiverWithTheSwitchOffAndACopyWithItOn) {
    string const two = mb::samples().two.bytes;
    auto const bySet = [](DBuffer& b) { return b.strip(" ", 1, DStringEnum::both); };
    auto const byTest = [](DBuffer& b) { return b.strip(DStringTest(isBlank), DStringEnum::both); };
    {
        SwitchAt const at(off);
        EXPECT_TRUE(returnsItself(two + "a" + two, bySet));
        EXPECT_TRUE(returnsItself(two + "a" + two, byTest));
    }
    SwitchAt const at(on);
    EXPECT_FALSE(returnsItself(two + "a" + two, bySet));
    EXPECT_FALSE(returnsItself(two + "a" + two, byTest));
    EXPECT_EQ(strip(two + "a" + two, " ", DStringEnum::both), two + "a" + two);
}

TEST(MultiByteStrip, EmptyTextIsReturnedInBothStates) {
    inBothStates([] {
        EXPECT_TRUE(returnsItself("", [](DBuffer& b) { return b.strip(" ", 1, DStringEnum::both); }));
        EXPECT_TRUE(returnsItself(
            "", [](DBuffer& b) { return b.strip(DStringTest(isBlank), DStringEnum::trailing); }));
    });
}

TEST(MultiByteStrip, EmptySetStripsNothing) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        for (auto const mode : {DStringEnum::leading, DStringEnum::trailing, DStringEnum::both})
            EXPECT_EQ(strip(" " + two, "", mode), " " + two);
    });
}

TEST(MultiByteStrip, LeadByteAloneAsTheSetStripsTheEndToNothingWhichIsWanted) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        string const lead = c.substr(0, 1);
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::leading), "a" + c);
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::trailing), "");
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::both), "");
    });
}

TEST(MultiByteStrip, TestThatThrowsLeavesTheReceiver) {
    inBothStates([] {
        Owned const text = mb::buffer(" " + mb::samples().two.bytes);
        EXPECT_THROW(Owned(text->strip(DStringTest(throwsOut), DStringEnum::both)), int);
        EXPECT_EQ(text->refs, 1U);
        EXPECT_EQ(text.text(), " " + mb::samples().two.bytes);
    });
}

// Reverse

TEST(MultiByteReverse, KeepsTheBytesOfACharacterInTheirOrder) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int) {
            EXPECT_EQ(reverse("a" + c + "b"), "b" + c + "a");
            EXPECT_EQ(reverse(c + "a"), "a" + c);
            EXPECT_EQ(reverse(c), c);
            EXPECT_EQ(reverse(string("a\0", 2) + c), c + string("\0a", 2));
        });
    });
}

TEST(MultiByteReverse, NeverChangesTheReceiver) {
    inBothStates([] {
        EXPECT_TRUE(returnsItself("", [](DBuffer& b) { return b.reverse(); }));
        EXPECT_TRUE(returnsItself("a", [](DBuffer& b) { return b.reverse(); }));
        Owned const text = mb::buffer("a" + mb::samples().two.bytes);
        Owned const result(text->reverse());
        EXPECT_NE(result.get(), text.get());
        EXPECT_EQ(text.text(), "a" + mb::samples().two.bytes);
        EXPECT_EQ(text->refs, 1U);
    });
}

TEST(MultiByteReverse, TakesBytesThatAreNoCharacterOneByOneWithTheSwitchOff) {
    SwitchAt const at(off);
    string const bad = mb::samples().invalid;
    string const two = mb::samples().two.bytes;
    EXPECT_EQ(reverse("a" + bad + two), two + bad + "a");
    EXPECT_EQ(reverse(two + bad), bad + two);
}

TEST(MultiByteReverse, BackslashAndTildeKeepTheirBytesWithTheSwitchOn) {
    SwitchAt const at(on);
    EXPECT_EQ(reverse("a\\~"), "~\\a");
    if (mb::hasYenSign()) {
        EXPECT_EQ(reverse("a\x81\x5F"), "\x81\x5F"
                                        "a");
        EXPECT_EQ(upper("\x81\x5F\\"), "\x81\x5F\\");
    }
}

// Overlay

TEST(MultiByteOverlay, WithTheSwitchOffTheHeadOfACutCharacterBecomesBlanksAndItsTailPadsWhichIsWanted) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(overlay("a" + c + "b", "X", 2, '.'), "aX" + string(n - 1, '.') + "b");
        EXPECT_EQ(overlay("a" + c + "b", "X", n + 1, '.'), "a" + string(n - 1, ' ') + "Xb");
        if (n > 2) {
            EXPECT_EQ(overlay("a" + c + "b", "X", 3, '.'), "a X" + string(n - 2, '.') + "b");
        }
        EXPECT_EQ(overlay(c + "a" + c, "XY", n, '.'), string(n - 1, ' ') + "XY" + c);
    });
}

TEST(MultiByteOverlay, WithTheSwitchOnBothPartsOfACutCharacterBecomePads) {
    SwitchAt const at(on);
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(overlay("a" + c + "b", "X", 2, '.'), "aX" + string(n - 1, '.') + "b");
        EXPECT_EQ(overlay("a" + c + "b", "X", n + 1, '.'), "a" + string(n - 1, '.') + "Xb");
    });
}

TEST(MultiByteOverlay, AtCharacterStartsAndBeyondTheEndIsPlain) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(overlay("a" + c + "b", string(n, 'X'), 2, '.'), "a" + string(n, 'X') + "b");
            EXPECT_EQ(overlay("a" + c, "X", 0, '.'), "X" + c);
            EXPECT_EQ(overlay("a" + c, "X", n + 2, '.'), "a" + c + "X");
            EXPECT_EQ(overlay("a" + c, "X", n + 4, '.'), "a" + c + "..X");
            EXPECT_EQ(overlay("ab", "X" + c + c, 2, '.'), "aX" + c + c);
            EXPECT_EQ(overlay("a" + c, "", n + 3, '.'), "a" + c + ".");
            EXPECT_EQ(overlay("", c, 0, '.'), c);
            EXPECT_EQ(overlay("", c, 3, '.'), ".." + c);
        });
    });
}

TEST(MultiByteOverlay, WithNothingGivesTheReceiver) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        for (unsigned int const position : {0U, 1U, 3U})
            EXPECT_TRUE(
                returnsItself("a" + two, [&](DBuffer& b) { return b.overlayWith("", 0, position, '.'); }));
    });
}

// Justify

TEST(MultiByteLeftJustify, NeverEndsInsideACharacter) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            for (unsigned int width = 1; width <= n; ++width)
                EXPECT_EQ(leftJustify("a" + c, width, '.'), "a" + string(width - 1, '.'));
            EXPECT_EQ(leftJustify("a" + c + "b", n + 1, '.'), "a" + c);
            EXPECT_EQ(leftJustify("a" + c, n + 3, '.'), "a" + c + "..");
            EXPECT_EQ(leftJustify(c, 1, '.'), ".");
            EXPECT_EQ(leftJustify(c, 0, '.'), "");
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.leftJustify(n + 1, '.'); }));
        });
    });
}

TEST(MultiByteLeftJustify, OfAnEmptyTextIsAllPad) {
    inBothStates([] {
        EXPECT_EQ(leftJustify("", 3, '.'), "...");
        EXPECT_TRUE(returnsItself("", [](DBuffer& b) { return b.leftJustify(0, '.'); }));
    });
}

// Insert

TEST(MultiByteInsert, InsideACharacterGoesBeforeItWithTheSwitchOffAndBehindItWithTheSwitchOnWhichIsWanted) {
    forEachCharacter([](string const& c, unsigned int n) {
        for (unsigned int inside = 2; inside <= n; ++inside) {
            SwitchAt const at(off);
            EXPECT_EQ(insert("a" + c + "b", "Z", inside, '.'), "aZ" + c + "b");
        }
        for (unsigned int inside = 2; inside <= n; ++inside) {
            SwitchAt const at(on);
            EXPECT_EQ(insert("a" + c + "b", "Z", inside, '.'), "a" + c + "Zb");
        }
    });
}

TEST(MultiByteInsert, InsideTheFirstCharacterWithTheSwitchOffGoesToTheFront) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) { EXPECT_EQ(insert(c, "Z", 1, '.'), "Z" + c); });
}

TEST(MultiByteInsert, BetweenCharactersAndBeyondTheEndIsPlain) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(insert("a" + c, c, 0, '.'), c + "a" + c);
            EXPECT_EQ(insert("a" + c, c, 1, '.'), "a" + c + c);
            EXPECT_EQ(insert("a" + c, c, n + 1, '.'), "a" + c + c);
            EXPECT_EQ(insert("a" + c, c, n + 3, '.'), "a" + c + ".." + c);
            EXPECT_EQ(insert("a" + c, "", n + 3, '.'), "a" + c + "..");
            EXPECT_EQ(insert("", c, 0, '.'), c);
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.insert("", 0, n, '.'); }));
        });
    });
}

// Center

TEST(MultiByteCenter, PutsTheOddPadOnTheRight) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(center("a" + c, n + 2, '.'), "a" + c + ".");
            EXPECT_EQ(center("a" + c, n + 4, '.'), ".a" + c + "..");
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.center(n + 1, '.'); }));
            EXPECT_EQ(center("", 3, '.'), "...");
        });
    });
}

TEST(MultiByteCenter, NarrowerWithTheSwitchOffBeginsAtACharacterAndPadsACutEnd) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int n) {
        // One byte less cuts at the end only.
        EXPECT_EQ(center("ab" + c, n + 1, '.'), "ab" + string(n - 1, '.'));
        // The middle of two of the same begins inside of the first, so at its front.
        EXPECT_EQ(center(c + c, n, '.'), c);
        EXPECT_EQ(center("a" + c + "b", 0, '.'), "");
    });
}

TEST(MultiByteCenter, NarrowerWithTheSwitchOnLeavesOutTheLastCharacterWhichIsWanted) {
    SwitchAt const at(on);
    EXPECT_EQ(center("abc", 2, '.'), "ab");
    EXPECT_EQ(center("abcd", 3, '.'), "abc");
    EXPECT_EQ(center("abcd", 2, '.'), "bc");
    forEachCharacter([](string const& c, unsigned int n) {
        EXPECT_EQ(center("ab" + c, n + 1, '.'), "ab" + string(n - 1, '.'));
        EXPECT_EQ(center("a" + c + "b", n + 1, '.'), "a" + c);
        EXPECT_EQ(center(c, n - 1, '.'), string(n - 1, '.')); // the only character is the last
        EXPECT_EQ(center("a" + c + "b", 0, '.'), "");
    });
}

// Change

TEST(MultiByteChange, ReplacesPatternsAtCharacterStartsOnly) {
    inBothStates([] {
        forEachCharacter([](string const& c, unsigned int n) {
            EXPECT_EQ(change("a" + c + "b" + c, c, "x", 1, 9), "axbx");
            EXPECT_EQ(change("a" + c + "b" + c, c, "xyz", 1, 1), "axyzb" + c);
            EXPECT_EQ(change("a" + c + "b" + c, c, "", 3, 9), "a" + c + "b");
            EXPECT_EQ(change("a" + c + "b", c.substr(1) + "b", "xx", 1, 9), "a" + c + "b");
            EXPECT_EQ(change("ab", "b", c, 1, 9), "a" + c);
            EXPECT_TRUE(
                returnsItself("a" + c, [&](DBuffer& b) { return b.change("a", 1, "b", 1, n + 1, 9); }));
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.change("a", 1, "b", 1, 1, 0); }));
            EXPECT_TRUE(returnsItself("a" + c, [&](DBuffer& b) { return b.change("", 0, "b", 1, 1, 9); }));
        });
    });
}

TEST(MultiByteChange, OfTheSameLengthIsDoneInPlaceForASoleOwnerInBothStates) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const sole = mb::buffer(two + "a");
        Owned const result(sole->change("a", 1, "b", 1, 1, 9));
        EXPECT_EQ(result.get(), sole.get());
        EXPECT_EQ(sole.text(), two + "b");
        Owned const other(sole->change("b", 1, "c", 1, 1, 9)); // two owners by now
        EXPECT_NE(other.get(), sole.get());
        EXPECT_EQ(sole.text(), two + "b");
        EXPECT_EQ(other.text(), two + "c");
    });
}

// Failures

struct NamedEdit {
    char const* name;
    std::function<DBuffer*(DBuffer&)> edit;
};

/// Every edit that converts its text with the switch on.
std::vector<NamedEdit> convertingEdits() {
    return {{"upperCase", [](DBuffer& b) { return b.upperCase(); }},
            {"lowerCase", [](DBuffer& b) { return b.lowerCase(); }},
            {"translate", [](DBuffer& b) { return b.translate("a", 1, "b", 1, ' '); }},
            {"strip(set)", [](DBuffer& b) { return b.strip(" ", 1, DStringEnum::both); }},
            {"strip(test)", [](DBuffer& b) { return b.strip(DStringTest(isBlank), DStringEnum::both); }},
            {"reverse", [](DBuffer& b) { return b.reverse(); }},
            {"overlayWith at the end", [](DBuffer& b) { return b.overlayWith("X", 1, 2, ' '); }},
            {"overlayWith at the front", [](DBuffer& b) { return b.overlayWith("X", 1, 1, ' '); }},
            {"leftJustify", [](DBuffer& b) { return b.leftJustify(1, ' '); }},
            {"insert", [](DBuffer& b) { return b.insert("X", 1, 1, ' '); }},
            {"center", [](DBuffer& b) { return b.center(1, ' '); }}};
}

TEST(MultiByteFailure, InvalidBytesFailOnTheWidePathAndLeaveTheReceiver) {
    SwitchAt const at(on);
    string const whole = "aab" + mb::samples().invalid + "c";
    for (NamedEdit const& named : convertingEdits()) {
        SCOPED_TRACE(named.name);
        Owned const text = mb::buffer(whole);
        EXPECT_EQ(failureOf([&] { Owned const lost(named.edit(*text)); }), badSequence(725));
        EXPECT_EQ(text.text(), whole);
        EXPECT_EQ(text->refs, 1U);
    }
}

TEST(MultiByteFailure, TruncatedCharacterFailsAsIncompleteOnTheWidePath) {
    SwitchAt const at(on);
    string const whole = "aab" + mb::samples().lead;
    for (NamedEdit const& named : convertingEdits()) {
        SCOPED_TRACE(named.name);
        Owned const text = mb::buffer(whole);
        SharedWith const other(text);
        EXPECT_EQ(failureOf([&] { Owned const lost(named.edit(*text)); }), badSequence(760));
        EXPECT_EQ(text.text(), whole);
        EXPECT_EQ(text->refs, 2U);
    }
}

TEST(MultiByteFailure, ArgumentsThatDoNotConvertFailOnTheWidePath) {
    SwitchAt const at(on);
    string const bad = "x" + mb::samples().lead;
    unsigned int const n = mb::lengthOf(bad);
    Owned const text = mb::buffer("a" + mb::samples().two.bytes);
    EXPECT_EQ(failureOf([&] { Owned(text->translate(bad.data(), n, "b", 1, ' ')); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->translate("b", 1, bad.data(), n, ' ')); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->translate("b", 1, "c", 1, bad[1])); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->strip(bad.data(), n, DStringEnum::both)); }), badSequence(760));
    EXPECT_EQ(failureOf([&] { Owned(text->insert(bad.data(), n, 1, ' ')); }), badSequence(760));
    EXPECT_EQ(text.text(), "a" + mb::samples().two.bytes);
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteFailure, BytePathsTakeAnyBytes) {
    SwitchAt const at(off);
    for (string const& bad : {mb::samples().invalid, mb::samples().lead})
        for (NamedEdit const& named : convertingEdits()) {
            SCOPED_TRACE(named.name);
            Owned const text = mb::buffer("aab" + bad);
            EXPECT_EQ(failureOf([&] { Owned const result(named.edit(*text)); }), Failure{});
        }
}

TEST(MultiByteFailure, EditsThatConvertNothingTakeAnyBytesWithTheSwitchOn) {
    SwitchAt const at(on);
    string const bad = "a" + mb::samples().invalid;
    EXPECT_EQ(leftJustify(bad, 3, '.'), bad + ".");
    EXPECT_EQ(center(bad, 4, '.'), "." + bad + ".");
    EXPECT_EQ(insert(bad, "X", 3, '.'), bad + ".X");
    EXPECT_EQ(overlay(bad, "X", 3, '.'), bad + "X");
    EXPECT_EQ(overlay("ab", mb::samples().invalid, 2, '.'), bad);
    EXPECT_EQ(change(bad, "a", "b", 1, 9), "b" + mb::samples().invalid);
}

TEST(MultiByteFailure, FailedEditOfAStringLeavesItAndItsCopies) {
    SwitchAt const at(on);
    string const bad = "a" + mb::samples().invalid;
    DString text(bad);
    DString const copy(text);
    EXPECT_EQ(failureOf([&] { text.upperCase(); }), badSequence(725));
    EXPECT_EQ(failureOf([&] { text.reverse(); }), badSequence(725));
    EXPECT_EQ(ops::contentsOf(text), bad);
    EXPECT_EQ(ops::contentsOf(copy), bad);
    EXPECT_EQ(ops::refsOf(text), 2U);
}

} // namespace
