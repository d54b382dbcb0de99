// Extraction and searches of the multi-byte buffer: where scans begin, where they stop, and how the
// national-language switch changes what a test sees.
#include "tests/nls/mb_support.h"

#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>

#include <string>
#include <vector>

namespace {

using mb::Owned;
using mb::SwitchAt;
using ops::Failure;
using ops::failureOf;
using std::string;

constexpr unsigned int most = 0xFFFFFFFF;

/// The letter a, a character of several bytes, the letter b.
struct Sandwich {
    explicit Sandwich(mb::Sample const& sample)
        : character(sample.bytes), size(mb::lengthOf(sample.bytes)), behind(size + 2),
          owned(mb::buffer("a" + sample.bytes + "b")) {}

    string character;
    unsigned int size;   ///< Bytes of the character, which begins at byte 2.
    unsigned int behind; ///< Where the letter b stands.
    Owned owned;

    DBuffer const* operator->() const { return owned.get(); }
};

unsigned int find(unsigned int (DBuffer::*search)(char const*, unsigned int, unsigned int) const,
                  DBuffer const& text, string const& wanted, unsigned int start) {
    return (text.*search)(wanted.data(), mb::lengthOf(wanted), start);
}
unsigned int indexOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOf, *t, p, start);
}
unsigned int indexOfAnyOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOfAnyOf, *t, p, start);
}
unsigned int indexOfAnyBut(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOfAnyBut, *t, p, start);
}
unsigned int lastIndexOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOf, *t, p, start);
}
unsigned int lastIndexOfAnyOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOfAnyOf, *t, p, start);
}
unsigned int lastIndexOfAnyBut(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOfAnyBut, *t, p, start);
}

string subString(Owned const& t, unsigned int start) { return Owned(t->subString(start)).text(); }
string subString(Owned const& t, unsigned int start, unsigned int count, char pad) {
    return Owned(t->subString(start, count, pad)).text();
}

int isLetterB(int c) { return c == 'b'; }
int isLetterA(int c) { return c == 'a'; }
int isNegative(int c) { return c < 0; }
int isAbove127(int c) { return c > 0x7F; }
int isNul(int c) { return c == 0; }
int isAnything(int) { return 1; }
int isNothing(int) { return 0; }
int throwsOut(int) { throw 5; }

Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}

/// Runs the body for each character of several bytes that the locale has, around it a text of it.
template <class Body>
void forEachSandwich(Body body) {
    ASSERT_FALSE(mb::samples().longCharacters().empty());
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        SCOPED_TRACE(mb::hex(sample.bytes));
        Sandwich const sandwich(sample);
        body(sandwich);
    }
}

/// Runs the body with the switch off and on.
template <class Body>
void inBothStates(Body body) {
    for (int const state : {0, 1}) {
        SCOPED_TRACE(state == 0 ? "switch off" : "switch on");
        SwitchAt const at(state);
        body();
    }
}

// Start positions

TEST(MultiByteStart, ForwardSearchInsideACharacterBeginsAtTheNextOne) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startSearch(0, 1), 1U);
        EXPECT_EQ(text->startSearch(1, 1), 1U);
        EXPECT_EQ(text->startSearch(2, 1), 2U);
        for (unsigned int inside = 3; inside < text.behind; ++inside)
            EXPECT_EQ(text->startSearch(inside, 1), text.behind);
        EXPECT_EQ(text->startSearch(text.behind, 1), text.behind);
        EXPECT_EQ(text->startSearch(text.behind + 1, 1), 0U);
        EXPECT_EQ(text->startSearch(most, 1), 0U);
    });
}

TEST(MultiByteStart, ForwardSearchInsideTheLastCharacterBeginsNowhere) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        Owned const text = mb::buffer("a" + sample.bytes);
        EXPECT_EQ(text->startSearch(2, 1), 2U);
        EXPECT_EQ(text->startSearch(3, 1), 0U);
    }
}

TEST(MultiByteStart, ForwardSearchNeedsRoomForThePatternBeforeItMoves) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startSearch(2, text.size + 1), 2U);
        EXPECT_EQ(text->startSearch(2, text.size + 2), 0U);
        EXPECT_EQ(text->startSearch(3, text.size), text.behind); // room at 3, though none is left behind it
        EXPECT_EQ(text->startSearch(1, most), 0U);
    });
}

TEST(MultiByteStart, BackwardSearchInsideACharacterBeginsAtItsFirstByte) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(text->startBackwardsSearch(0, 1), 0U);
        EXPECT_EQ(text->startBackwardsSearch(1, 1), 1U);
        for (unsigned int inside = 2; inside < text.behind; ++inside)
            EXPECT_EQ(text->startBackwardsSearch(inside, 1), 2U);
        EXPECT_EQ(text->startBackwardsSearch(most, 1), text.behind);
        EXPECT_EQ(text->startBackwardsSearch(most, 2), 2U);
        EXPECT_EQ(text->startBackwardsSearch(most, text.size + 2), 1U);
        EXPECT_EQ(text->startBackwardsSearch(most, text.size + 3), 0U);
    });
}

TEST(MultiByteStart, EmptyTextHasNoStart) {
    Owned const text = mb::buffer("");
    EXPECT_EQ(text->startSearch(0, 0), 0U);
    EXPECT_EQ(text->startSearch(1, 1), 0U);
    EXPECT_EQ(text->startBackwardsSearch(1, 0), 0U);
}

TEST(MultiByteStart, BytesThatAreNoCharacterAreStartsOfTheirOwn) {
    Owned const text = mb::buffer("a" + mb::samples().invalid + mb::samples().invalid + "b");
    for (unsigned int at = 1; at <= 4; ++at) {
        EXPECT_EQ(text->startSearch(at, 1), at);
        EXPECT_EQ(text->startBackwardsSearch(at, 1), at);
    }
}

// Extraction

TEST(MultiByteSubString, TailBlanksTheBytesOfACutCharacterInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            string const whole = "a" + text.character + "b";
            EXPECT_EQ(subString(text.owned, 0), whole);
            EXPECT_EQ(subString(text.owned, 1), whole);
            EXPECT_EQ(subString(text.owned, 2), text.character + "b");
            for (unsigned int inside = 3; inside < text.behind; ++inside)
                EXPECT_EQ(subString(text.owned, inside), string(text.behind - inside, ' ') + "b");
            EXPECT_EQ(subString(text.owned, text.behind), "b");
            EXPECT_EQ(subString(text.owned, text.behind + 1), "");
            EXPECT_EQ(subString(text.owned, most), "");
        });
    });
}

TEST(MultiByteSubString, TailOfAnEmptyTextIsEmpty) {
    inBothStates([] {
        EXPECT_EQ(subString(mb::buffer(""), 0), "");
        EXPECT_EQ(subString(mb::buffer(""), 1), "");
    });
}

TEST(MultiByteSubString, TailInsideTheLastCharacterIsAllBlank) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        EXPECT_EQ(subString(mb::buffer("a" + two), 3), " ");
    });
}

TEST(MultiByteSubString, TailOfTextThatIsInvalidBeforeTheStartIsBlank) {
    inBothStates([] { EXPECT_EQ(subString(mb::buffer(mb::samples().invalid + "abc"), 2), "   "); });
}

TEST(MultiByteSubString, TailOfTextThatIsInvalidBehindTheStartFailsInBothStates) {
    inBothStates([] {
        Owned const text = mb::buffer("ab" + mb::samples().invalid + "c");
        EXPECT_EQ(failureOf([&] { subString(text, 1); }), badSequence(725));
        EXPECT_EQ(text->refs, 1U);
        EXPECT_EQ(text.text(), "ab" + mb::samples().invalid + "c");
    });
}

TEST(MultiByteSubString, PieceNeverSplitsACharacterInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            EXPECT_EQ(subString(text.owned, 1, text.behind, '.'), "a" + text.character + "b");
            EXPECT_EQ(subString(text.owned, 0, 1, '.'), "a");
            EXPECT_EQ(subString(text.owned, 2, text.size, '.'), text.character);
            for (unsigned int count = 1; count < text.size; ++count) {
                EXPECT_EQ(subString(text.owned, 2, count, '.'), string(count, '.'));
                EXPECT_EQ(subString(text.owned, 1, count + 1, '.'), "a" + string(count, '.'));
                EXPECT_EQ(subString(text.owned, 2 + count, text.size - count + 1, '.'),
                          string(text.size - count, '.') + "b");
                EXPECT_EQ(subString(text.owned, 2 + count, 1, '.'), ".");
            }
            EXPECT_EQ(subString(text.owned, text.behind, 3, '.'), "b..");
            EXPECT_EQ(subString(text.owned, text.behind + 1, 3, '.'), "...");
            EXPECT_EQ(subString(text.owned, most, 3, '.'), "...");
            EXPECT_EQ(subString(text.owned, 2, 0, '.'), "");
        });
    });
}

TEST(MultiByteSubString, PieceOfAnEmptyTextIsAllPad) {
    inBothStates([] {
        EXPECT_EQ(subString(mb::buffer(""), 1, 2, '.'), "..");
        EXPECT_EQ(subString(mb::buffer(""), 0, 0, '.'), "");
    });
}

TEST(MultiByteSubString, PieceOfBytesThatAreNoCharacterDependsOnTheSwitch) {
    string const bad = mb::samples().invalid;
    Owned const text = mb::buffer("a" + bad + "b");
    {
        SwitchAt const off(0);
        EXPECT_EQ(subString(text, 2, 2, '.'), bad + "b");
    }
    SwitchAt const on(1);
    EXPECT_EQ(subString(text, 3, 1, '.'), "."); // the start cannot be located
    EXPECT_EQ(failureOf([&] { subString(text, 1, 1, '.'); }), badSequence(725));
    EXPECT_EQ(subString(text, 1, 0, '.'), ""); // nothing is converted
}

TEST(MultiByteSubString, TruncatedCharacterFailsAsIncompleteWithTheSwitchOn) {
    string const lead = mb::samples().lead;
    Owned const text = mb::buffer("ab" + lead);
    {
        SwitchAt const off(0);
        EXPECT_EQ(subString(text, 1, mb::lengthOf(lead) + 2, '.'), "ab" + lead);
    }
    SwitchAt const on(1);
    EXPECT_EQ(failureOf([&] { subString(text, 1, 1, '.'); }), badSequence(760));
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteSubString, EmbeddedNulIsACharacterOfOneByte) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer(string("a\0", 2) + two + string("\0b", 2));
        EXPECT_EQ(subString(text, 2), string("\0", 1) + two + string("\0b", 2));
        EXPECT_EQ(subString(text, 4), string(" \0b", 3));
        EXPECT_EQ(subString(text, 2, 2, '.'), string("\0.", 2));
    });
}

// Patterns

TEST(MultiBytePattern, IsFoundAtCharacterStartsOnly) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOf(text.owned, text.character, 1), 2U);
        EXPECT_EQ(indexOf(text.owned, text.character + "b", 0), 2U);
        EXPECT_EQ(indexOf(text.owned, text.character, 3), 0U);
        string const tail = text.character.substr(1) + "b";
        EXPECT_EQ(indexOf(text.owned, tail, 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, tail, most), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, most), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, 3), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, text.character, 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "b", most), text.behind);
    });
}

TEST(MultiBytePattern, MayEndInsideACharacter) {
    forEachSandwich([](Sandwich const& text) {
        string const cut = "a" + text.character.substr(0, 1);
        EXPECT_EQ(indexOf(text.owned, cut, 1), 1U);
        EXPECT_EQ(lastIndexOf(text.owned, cut, most), 1U);
    });
}

TEST(MultiBytePattern, OfOneByteIsAnyCharacterThatBeginsWithIt) {
    forEachSandwich([](Sandwich const& text) {
        string const lead = text.character.substr(0, 1);
        EXPECT_EQ(indexOf(text.owned, lead, 1), 2U);
        EXPECT_EQ(indexOfAnyOf(text.owned, lead, 1), 2U);
        EXPECT_EQ(lastIndexOf(text.owned, lead, most), 2U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, lead, most), 2U);
    });
}

TEST(MultiBytePattern, OneByteThatIsOnlyTheTailOfACharacterIsNotFound) {
    mb::Sample const& sample =
        mb::samples().asciiTrail.exists() ? mb::samples().asciiTrail : mb::samples().two;
    Sandwich const text(sample);
    string const tail = sample.bytes.substr(1, 1);
    EXPECT_EQ(indexOf(text.owned, tail, 1), 0U);
    EXPECT_EQ(indexOfAnyOf(text.owned, tail + "z", 1), 0U);
    EXPECT_EQ(lastIndexOf(text.owned, tail, most), 0U);
    EXPECT_EQ(lastIndexOfAnyOf(text.owned, tail + "z", most), 0U);
}

TEST(MultiBytePattern, WithoutBytesOrWithoutRoomIsNotFound) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOf(text.owned, "", 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "", most), 0U);
        EXPECT_EQ(indexOf(text.owned, "b+", text.behind), 0U);
        EXPECT_EQ(indexOf(text.owned, "a" + text.character + "b+", 1), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "a" + text.character + "b+", most), 0U);
        EXPECT_EQ(indexOf(text.owned, "ab", 3), 0U); // after the move to b there is no room
        EXPECT_EQ(indexOf(text.owned, "a", most), 0U);
        EXPECT_EQ(lastIndexOf(text.owned, "a", 0), 0U);
    });
}

TEST(MultiBytePattern, RepeatedCharactersGiveTheFirstAndTheLast) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        string const c = sample.bytes;
        unsigned int const n = mb::lengthOf(c);
        Owned const text = mb::buffer(c + c + c);
        EXPECT_EQ(indexOf(text, c + c, 1), 1U);
        EXPECT_EQ(indexOf(text, c + c, 2), n + 1);
        EXPECT_EQ(indexOf(text, c + c, n + 2), 0U);
        EXPECT_EQ(lastIndexOf(text, c + c, most), n + 1);
        EXPECT_EQ(lastIndexOf(text, c + c, n), 1U);
        EXPECT_EQ(lastIndexOf(text, c, most), 2 * n + 1);
    }
}

// Sets

TEST(MultiByteSet, ScanThatBeginsInsideACharacterLeavesItOut) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "b", 3), text.behind);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "a", 3), 1U);
        EXPECT_EQ(indexOfAnyOf(text.owned, text.character + "b", 3), text.behind);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, text.character + "a", 3), 2U);
    });
}

TEST(MultiByteSet, MembersAreWholeCharacters) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "xy", 1), 0U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "xb", 1), text.behind);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character, 1), 2U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character.substr(1), 1), 0U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character.substr(0, 1), 1), 0U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, text.character + "x", most), 2U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "xa", most), 1U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "xy", most), 0U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "a" + text.character, 1), text.behind);
        EXPECT_EQ(indexOfAnyBut(text.owned, "ab", 1), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "ab" + text.character, 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "b" + text.character, most), 1U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "ab", most), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "ab" + text.character, most), 0U);
    });
}

/// What lies between the members in the tests below: single bytes, other characters, and characters whose
/// bytes next to each other look like a member, where the locale has them.
std::vector<string> fillers(string const& member) {
    string other = member;
    other.back() = static_cast<char>(other.back() + 8);
    std::vector<string> result{"x", other, "x" + other};
    string const turned(member.rbegin(), member.rend());
    if (turned != member && mb::charactersOf(turned).size() == 1) result.push_back(turned);
    return result;
}

TEST(MultiByteSet, OfFewOrManyMembersIsFoundWhereverOneStands) {
    string const base = mb::samples().wide.bytes;
    std::vector<string> members;
    string set = "#";
    for (char i = 0; i < 6; ++i) {
        members.push_back(base);
        members.back().back() = static_cast<char>(base.back() + i);
        set += members.back();
        ASSERT_EQ(mb::charactersOf(members.back()).size(), 1U);
        for (string const& filler : fillers(base))
            for (unsigned int const before :
                 {0U, 1U, 2U, 9U, 15U, 16U, 20U, 21U, 22U, 31U, 32U, 33U, 63U, 64U, 85U, 86U, 320U, 1000U}) {
                string text;
                for (unsigned int n = 0; n < before; ++n)
                    text += filler;
                unsigned int const position = mb::lengthOf(text) + 1;
                text += members.back();
                for (unsigned int n = 0; n < 1000 - before; ++n)
                    text += filler;
                Owned const owned = mb::buffer(text);
                EXPECT_EQ(indexOfAnyOf(owned, set, 1), position) << before << mb::hex(filler);
                EXPECT_EQ(indexOfAnyOf(owned, set, position), position);
                EXPECT_EQ(indexOfAnyOf(owned, set, position + 1), 0U);
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, most), position) << before << mb::hex(filler);
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, position), position);
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, position - 1), 0U);
            }
    }
}

TEST(MultiByteSet, CharacterIsOneMemberWhateverItsBytes) {
    forEachSandwich([](Sandwich const& text) {
        // A set of one character of several bytes is a set of more than one byte.
        EXPECT_EQ(indexOfAnyBut(text.owned, text.character, 2), text.behind);
        EXPECT_EQ(indexOfAnyOf(text.owned, text.character, 1), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, text.character, 3), 1U);
    });
}

TEST(MultiByteSet, EmptySetFindsNothingButAnyButGivesTheStart) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "", 1), 0U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "", most), 0U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", 0), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", 3), text.behind);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", text.behind + 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", 3), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", most), text.behind);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", 0), 0U);
    });
}

TEST(MultiByteSet, LeadByteAloneMakesAnyButFindTheStartForwardsAndNothingBackwardsWhichIsWanted) {
    forEachSandwich([](Sandwich const& text) {
        string const lead = text.character.substr(0, 1);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 1), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 2), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 3), text.behind);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, text.behind + 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, lead, most), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, lead, 1), 0U);
    });
}

TEST(MultiByteSet, AnyButOneByteSkipsThatByteOnly) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyBut(text.owned, "a", 1), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "b", 1), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "b", 3), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "b", most), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "a", 1), 0U);
    });
}

TEST(MultiByteSet, NulIsAMemberLikeAnyOther) {
    string const two = mb::samples().two.bytes;
    Owned const text = mb::buffer(string("\0\0", 2) + two + string("\0", 1));
    string const nul(1, '\0');
    EXPECT_EQ(indexOfAnyOf(text, nul, 3), 5U);
    EXPECT_EQ(indexOfAnyBut(text, nul, 1), 3U);
    EXPECT_EQ(lastIndexOfAnyBut(text, nul, most), 3U);
    EXPECT_EQ(lastIndexOfAnyOf(text, nul, 4), 2U);
    EXPECT_EQ(indexOfAnyBut(text, nul + two, 1), 0U);
    EXPECT_EQ(lastIndexOfAnyOf(text, nul + "x", most), 5U);
}

TEST(MultiByteSet, BytesThatAreNoCharacterAreMembersOfTheirOwn) {
    string const bad = mb::samples().invalid;
    Owned const text = mb::buffer("a" + bad + "b" + bad);
    EXPECT_EQ(indexOfAnyOf(text, bad, 1), 2U);
    EXPECT_EQ(indexOfAnyOf(text, "x" + bad, 3), 4U);
    EXPECT_EQ(lastIndexOfAnyOf(text, bad + "x", most), 4U);
    EXPECT_EQ(indexOfAnyBut(text, "ab" + bad, 1), 0U);
    EXPECT_EQ(lastIndexOfAnyBut(text, bad + bad, most), 3U);
}

TEST(MultiByteSet, TruncatedCharacterAtTheEndOfASetIsReadNoFurther) {
    string const lead = mb::samples().lead;
    mb::AtMemoryEnd const set("x" + lead);
    Owned const text = mb::buffer("a" + lead);
    EXPECT_EQ(text->indexOfAnyOf(set.data(), mb::lengthOf(lead) + 1, 1), 2U);
    EXPECT_EQ(text->lastIndexOfAnyBut(set.data(), mb::lengthOf(lead) + 1, most), 1U);
    mb::AtMemoryEnd const one(lead.substr(0, 1));
    EXPECT_EQ(text->indexOfAnyBut(one.data(), 1, 1), 1U);
}

// Tests

TEST(MultiByteTest, WithTheSwitchOffAnyOfSeesEveryByteAndAnyButOnlyFirstBytesWhichIsWanted) {
    SwitchAt const off(0);
    mb::Sample const& trail = mb::samples().asciiTrail;
    string const two = trail.exists() ? trail.bytes : mb::samples().two.bytes;
    Owned const text = mb::buffer("a" + two + "b");
    static int wanted;
    wanted = static_cast<signed char>(two[1]);
    DStringTest const isTail([](int c) -> int { return c == wanted; });
    DStringTest const isNotTail([](int c) -> int { return c != wanted; });
    EXPECT_EQ(text->indexOfAnyOf(isTail, 1), 3U);
    EXPECT_EQ(text->indexOf(isTail, 1), 3U);
    EXPECT_EQ(text->indexOfAnyBut(isNotTail, 1), 0U);
    EXPECT_EQ(text->lastIndexOfAnyOf(isTail, most), 0U);
    EXPECT_EQ(text->lastIndexOfAnyBut(isNotTail, most), 0U);
}

TEST(MultiByteTest, WithTheSwitchOffAnyOfFindsAContinuationByteBehindARefusedLead) {
    SwitchAt const off(0);
    mb::Sample const& sample = mb::samples().asciiTrail;
    if (!sample.exists()) {
        // Where all trail bytes are high, they are still bytes of their own to the test.
        Owned const text = mb::buffer("a" + mb::samples().two.bytes);
        EXPECT_EQ(text->indexOfAnyOf(DStringTest(isNegative), 1), 2U);
        return;
    }
    Owned const text = mb::buffer("z" + sample.bytes);
    static int tail;
    tail = sample.bytes[1];
    DStringTest const isTail([](int c) -> int { return c == tail; });
    EXPECT_EQ(text->indexOfAnyOf(isTail, 1), 3U);
    EXPECT_EQ(text->lastIndexOfAnyOf(isTail, most), 0U); // backwards only first bytes are seen
}

TEST(MultiByteTest, BytesArriveAsSignedValuesWithTheSwitchOff) {
    SwitchAt const off(0);
    forEachSandwich([](Sandwich const& text) {
        DStringTest const negative(isNegative);
        DStringTest const above(isAbove127);
        EXPECT_EQ(text->indexOfAnyOf(negative, 1), 2U);
        EXPECT_EQ(text->indexOfAnyOf(above, 1), 0U);
        EXPECT_EQ(text->indexOfAnyBut(negative, 2), text.behind);
        EXPECT_EQ(text->lastIndexOf(negative, most), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(negative, most), 2U);
        EXPECT_EQ(text->lastIndexOfAnyBut(negative, 3), 1U);
        EXPECT_EQ(text->lastIndexOfAnyOf(above, most), 0U);
    });
}

TEST(MultiByteTest, CharactersArriveAsWideValuesWithTheSwitchOn) {
    SwitchAt const on(1);
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        Sandwich const text(sample);
        static int value;
        value = static_cast<int>(sample.value);
        DStringTest const isIt([](int c) -> int { return c == value; });
        DStringTest const isNotIt([](int c) -> int { return c != value; });
        EXPECT_EQ(text->indexOf(isIt, 1), 2U);
        EXPECT_EQ(text->indexOfAnyOf(isIt, 0), 2U);
        EXPECT_EQ(text->indexOfAnyOf(isIt, 3), 0U);
        EXPECT_EQ(text->indexOfAnyBut(isNotIt, 1), 2U);
        EXPECT_EQ(text->indexOfAnyBut(isIt, 2), text.behind);
        EXPECT_EQ(text->lastIndexOf(isIt, most), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(isIt, 3), 2U);
        EXPECT_EQ(text->lastIndexOfAnyOf(isIt, 1), 0U);
        EXPECT_EQ(text->lastIndexOfAnyBut(isNotIt, most), 2U);
        EXPECT_EQ(text->lastIndexOfAnyBut(isIt, 2), 1U);
    }
}

TEST(MultiByteTest, BeginAtCharactersInBothStates) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            DStringTest const anything(isAnything);
            DStringTest const nothing(isNothing);
            DStringTest const letterA(isLetterA);
            DStringTest const letterB(isLetterB);
            EXPECT_EQ(text->indexOfAnyOf(anything, 3), text.behind);
            EXPECT_EQ(text->indexOfAnyBut(nothing, 3), text.behind);
            EXPECT_EQ(text->lastIndexOfAnyOf(anything, 3), 2U);
            EXPECT_EQ(text->lastIndexOfAnyBut(nothing, 3), 2U);
            EXPECT_EQ(text->indexOfAnyOf(letterB, 1), text.behind);
            EXPECT_EQ(text->lastIndexOfAnyOf(letterA, most), 1U);
            EXPECT_EQ(text->indexOfAnyOf(nothing, 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyOf(nothing, most), 0U);
            EXPECT_EQ(text->indexOfAnyBut(anything, 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyBut(anything, most), 0U);
            EXPECT_EQ(text->indexOfAnyOf(anything, text.behind + 1), 0U);
            EXPECT_EQ(text->lastIndexOfAnyOf(anything, 0), 0U);
            EXPECT_EQ(text->indexOf(anything, 0), 1U);
            EXPECT_EQ(text->lastIndexOf(anything, most), text.behind);
        });
    });
}

TEST(MultiByteTest, EmptyTextHasNothingToTest) {
    inBothStates([] {
        Owned const text = mb::buffer("");
        DStringTest const anything(isAnything);
        EXPECT_EQ(text->indexOfAnyOf(anything, 1), 0U);
        EXPECT_EQ(text->indexOfAnyBut(anything, 0), 0U);
        EXPECT_EQ(text->lastIndexOfAnyOf(anything, most), 0U);
        EXPECT_EQ(text->lastIndexOfAnyBut(anything, most), 0U);
        EXPECT_EQ(mb::asMultiByte(text).windexOfAnyBut(anything, 1), 0U);
    });
}

TEST(MultiByteTest, NulIsTestedLikeAnyOtherCharacter) {
    inBothStates([] {
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer("a" + two + string("\0b", 2));
        DStringTest const nul(isNul);
        EXPECT_EQ(text->indexOfAnyOf(nul, 1), 4U);
        EXPECT_EQ(text->lastIndexOfAnyOf(nul, most), 4U);
        EXPECT_EQ(text->indexOfAnyBut(nul, 4), 5U);
        EXPECT_EQ(text->lastIndexOfAnyBut(nul, 4), 2U);
    });
}

TEST(MultiByteTest, TextThatDoesNotConvertFailsWithTheSwitchOn) {
    SwitchAt const on(1);
    string const whole = "ab" + mb::samples().invalid + "c";
    Owned const text = mb::buffer(whole);
    DStringTest const nothing(isNothing);
    for (auto const search :
         {static_cast<unsigned int (DBuffer::*)(DStringTest const&, unsigned int) const>(&DBuffer::indexOf),
          &DBuffer::indexOfAnyOf, &DBuffer::indexOfAnyBut})
        EXPECT_EQ(failureOf([&] { (void)(*text.*search)(nothing, 1); }), badSequence(725));
    for (auto const search : {static_cast<unsigned int (DBuffer::*)(DStringTest const&, unsigned int) const>(
                                  &DBuffer::lastIndexOf),
                              &DBuffer::lastIndexOfAnyOf, &DBuffer::lastIndexOfAnyBut}) {
        EXPECT_EQ(failureOf([&] { (void)(*text.*search)(nothing, 2); }), badSequence(725));
        EXPECT_EQ((*text.*search)(nothing, 4), 0U); // the start cannot be located behind it
    }
    EXPECT_EQ(text->indexOfAnyOf(nothing, 4), 0U);
    EXPECT_EQ(text->indexOfAnyOf(nothing, 5), 0U);
    EXPECT_EQ(text.text(), whole);
    EXPECT_EQ(text->refs, 1U);
}

TEST(MultiByteTest, TextThatDoesNotConvertIsSearchedByBytesWithTheSwitchOff) {
    SwitchAt const off(0);
    Owned const text = mb::buffer("ab" + mb::samples().invalid + "c");
    EXPECT_EQ(text->indexOfAnyOf(DStringTest(isNegative), 1), 3U);
    EXPECT_EQ(text->lastIndexOfAnyOf(DStringTest(isNegative), most), 3U);
    EXPECT_EQ(text->indexOfAnyBut(DStringTest(isNegative), 3), 4U);
    EXPECT_EQ(text->lastIndexOfAnyBut(DStringTest(isNegative), 3), 2U);
}

TEST(MultiByteTest, ThatThrowsLeavesTheTextAsItWas) {
    inBothStates([] {
        forEachSandwich([](Sandwich const& text) {
            DStringTest const thrower(throwsOut);
            EXPECT_THROW((void)text->indexOfAnyOf(thrower, 1), int);
            EXPECT_THROW((void)text->indexOfAnyBut(thrower, 1), int);
            EXPECT_THROW((void)text->lastIndexOfAnyOf(thrower, most), int);
            EXPECT_THROW((void)text->lastIndexOfAnyBut(thrower, most), int);
            EXPECT_THROW((void)mb::asMultiByte(text.owned).windexOfAnyBut(thrower, 1), int);
            EXPECT_EQ(text.owned.text(), "a" + text.character + "b");
            EXPECT_EQ(text->refs, 1U);
        });
    });
}

TEST(MultiByteWideTest, SeesWideValuesWhateverTheSwitch) {
    inBothStates([] {
        for (mb::Sample const& sample : mb::samples().longCharacters()) {
            Sandwich const text(sample);
            DDBCSBuffer const& buffer = mb::asMultiByte(text.owned);
            static int value;
            value = static_cast<int>(sample.value);
            DStringTest const isNotIt([](int c) -> int { return c != value; });
            DStringTest const isIt([](int c) -> int { return c == value; });
            EXPECT_EQ(buffer.windexOfAnyBut(isNotIt, 0), 2U);
            EXPECT_EQ(buffer.windexOfAnyBut(isNotIt, 3), 0U);
            EXPECT_EQ(buffer.windexOfAnyBut(isIt, 2), text.behind);
            EXPECT_EQ(buffer.windexOfAnyBut(isIt, text.behind + 1), 0U);
            EXPECT_EQ(buffer.windexOfAnyBut(DStringTest(isAnything), 1), 0U);
        }
    });
}

TEST(MultiByteWideTest, TestsBytesThatAreNoCharacterAsSignedValuesAndGoesOn) {
    inBothStates([] {
        string const bad = mb::samples().invalid;
        string const two = mb::samples().two.bytes;
        Owned const text = mb::buffer("a" + bad + two + "b");
        DDBCSBuffer const& buffer = mb::asMultiByte(text);
        static int badValue;
        badValue = static_cast<signed char>(bad[0]);
        EXPECT_EQ(buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c != badValue; }), 1), 2U);
        EXPECT_EQ(
            buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c == badValue || c == 'a'; }), 1),
            3U);
        EXPECT_EQ(
            buffer.windexOfAnyBut(DStringTest([](int c) -> int { return c == badValue || c > 0x7F; }), 2),
            5U);
    });
}

TEST(MultiByteTest, AsciiBytesHaveTheValuesOfTheLocale) {
    SwitchAt const on(1);
    // In this encoding a backslash byte is the yen sign, a tilde byte the overline.
    bool const isShiftJis = mb::localeModeIs("sjis");
    static int backslash;
    static int tilde;
    backslash = isShiftJis ? 0xA5 : 0x5C;
    tilde = isShiftJis ? 0x203E : 0x7E;
    Owned const text = mb::buffer("a\\~");
    EXPECT_EQ(text->indexOfAnyOf(DStringTest([](int c) -> int { return c == backslash; }), 1), 2U);
    EXPECT_EQ(text->indexOfAnyOf(DStringTest([](int c) -> int { return c == tilde; }), 1), 3U);
    EXPECT_EQ(mb::asMultiByte(text).windexOfAnyBut(DStringTest([](int c) -> int { return c != tilde; }), 1),
              3U);
}

// Strings

TEST(MultiByteString, SearchesGoThroughTheMultiByteBuffer) {
    forEachSandwich([](Sandwich const& sandwich) {
        DString const text("a" + sandwich.character + "b");
        EXPECT_EQ(text.indexOf(sandwich.character), 2U);
        EXPECT_EQ(text.indexOf(sandwich.character, 3), 0U);
        EXPECT_EQ(text.indexOf('b', 3), sandwich.behind);
        EXPECT_EQ(text.indexOfAnyOf("xb" + sandwich.character, 3), sandwich.behind);
        EXPECT_EQ(text.indexOfAnyBut("ab"), 2U);
        EXPECT_EQ(text.lastIndexOf(sandwich.character), 2U);
        EXPECT_EQ(text.lastIndexOfAnyOf('a', 3), 1U);
        EXPECT_EQ(text.lastIndexOfAnyBut("b" + sandwich.character), 1U);
        EXPECT_EQ(text.subString(3), DString(string(sandwich.size - 1, ' ') + "b"));
    });
}

TEST(MultiByteWords, EndBehindAllBytesOfTheLastCharacter) {
    string const words = "a  b" + mb::samples().wide.bytes;
    DString const text(" " + words + " ");
    EXPECT_EQ(ops::contentsOf(text.words(1, 2)), words);
    EXPECT_EQ(ops::contentsOf(text.words(2, 9)), "b" + mb::samples().wide.bytes);
}

TEST(CharLength, GoesOnWithinACharacterThatItsStateHasBegun) {
    string const character = mb::samples().wide.bytes;
    std::mbstate_t state{};
    ASSERT_EQ(std::mbrlen(character.data(), 1, &state), mb::incompleteSequence);
    EXPECT_EQ(DDBCSBuffer::charLength(character.c_str() + 1, &state), static_cast<int>(character.size()) - 1);
    EXPECT_NE(std::mbsinit(&state), 0) << "the character is over";
}

TEST(WideStrip, OfWhiteSpaceAsksTheLocaleAboutWideCharacters) {
    SwitchAt const on(1);
    string const kept = mb::samples().wide.bytes + "a" + mb::samples().wide.bytes;
    DString text(" \t" + kept + "\n ");
    EXPECT_EQ(ops::contentsOf(text.strip()), kept);
    if (!mb::isUtf8()) return;
    DString spaced("\xE3\x80\x80 a \xE3\x80\x80"); // ideographic spaces
    EXPECT_EQ(ops::contentsOf(spaced.strip()), "a");
}

TEST(WideOccurrences, OfATestAskItOnceForEachCharacter) {
    SwitchAt const on(1);
    static std::vector<int> asked;
    DStringTest const notTheLetter([](int c) {
        asked.push_back(c);
        return c == 'a' ? 0 : 1;
    });
    mb::Sample const& two = mb::samples().two;
    std::vector<int> const values{static_cast<int>(two.value), 'a', static_cast<int>(two.value), 'b'};
    DString const text(two.bytes + "a" + two.bytes + "b");
    asked.clear();
    EXPECT_EQ(text.occurrencesOf(notTheLetter), 3u);
    EXPECT_EQ(asked, values);
    asked.clear();
    EXPECT_EQ(text.occurrencesOf(notTheLetter, 2), 2u) << "from within the first character";
    EXPECT_EQ(asked.size(), 3u);
    EXPECT_EQ(text.occurrencesOf(notTheLetter, 7), 0u) << "from behind the end";
}

// Where a walk from far in front would be needed to tell characters apart, searching on after each of many
// matches must not begin that walk anew: this would take minutes.
TEST(ManyMatches, AreFoundInTextWithoutAscii) {
    SwitchAt const off(0);
    constexpr unsigned int count = 200000;
    string const two = mb::samples().two.bytes;
    string text;
    for (unsigned int i = 0; i < count; ++i)
        text += two;
    DString subject(text);
    EXPECT_EQ(subject.occurrencesOf(two), count);
    subject.change(two, "x");
    EXPECT_TRUE(ops::contentsOf(subject) == string(count, 'x'));
}

TEST(WidePattern, IsFoundInTextFullOfAlmostMatches) {
    constexpr unsigned int half = 200000;
    string const text(2 * half, 'a');
    DWBuffer const wide((text + "b").data(), 2 * half + 1);
    DWBuffer const ended((text.substr(half) + "b").data(), half + 1);
    DWBuffer const begun(("b" + text.substr(half)).data(), half + 1);
    EXPECT_EQ(wide.positionOf(ended, 1), half + 1);
    EXPECT_EQ(wide.positionOf(begun, 1), 0U);
    EXPECT_EQ(wide.lastPositionOf(ended, 2 * half), half + 1);
    EXPECT_EQ(wide.lastPositionOf(begun, 2 * half), 0U);
}

} // namespace
