// Searches of multi-byte text for members of a set.
#include "tests/buffers/ddbcs_search_support.h"

#include <random>
#include <string>
#include <vector>

namespace {

using namespace searching;

TEST(MultiByteSet, ScanThatBeginsInsideACharacterLeavesItOut) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "b", 3), text.after);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "a", 3), 1U);
        EXPECT_EQ(indexOfAnyOf(text.owned, text.character + "b", 3), text.after);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, text.character + "a", 3), 2U);
    });
}

TEST(MultiByteSet, MembersAreWholeCharacters) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "xy", 1), 0U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "xb", 1), text.after);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character, 1), 2U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character.substr(1), 1), 0U);
        EXPECT_EQ(indexOfAnyOf(text.owned, "x" + text.character.substr(0, 1), 1), 0U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, text.character + "x", farEnd), 2U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "xa", farEnd), 1U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "xy", farEnd), 0U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "a" + text.character, 1), text.after);
        EXPECT_EQ(indexOfAnyBut(text.owned, "ab", 1), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "ab" + text.character, 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "b" + text.character, farEnd), 1U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "ab", farEnd), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "ab" + text.character, farEnd), 0U);
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
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, farEnd), position) << before << mb::hex(filler);
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, position), position);
                EXPECT_EQ(lastIndexOfAnyOf(owned, set, position - 1), 0U);
            }
    }
}

TEST(MultiByteSet, CharacterIsOneMemberWhateverItsBytes) {
    forEachSandwich([](Sandwich const& text) {
        // A set of one character of several bytes is a set of more than one byte.
        EXPECT_EQ(indexOfAnyBut(text.owned, text.character, 2), text.after);
        EXPECT_EQ(indexOfAnyOf(text.owned, text.character, 1), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, text.character, 3), 1U);
    });
}

TEST(MultiByteSet, EmptySetFindsNothingButAnyButGivesTheStart) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyOf(text.owned, "", 1), 0U);
        EXPECT_EQ(lastIndexOfAnyOf(text.owned, "", farEnd), 0U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", 0), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", 3), text.after);
        EXPECT_EQ(indexOfAnyBut(text.owned, "", text.after + 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", 3), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", farEnd), text.after);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "", 0), 0U);
    });
}

TEST(MultiByteSet, LeadByteAloneMakesAnyButFindTheStartForwardsAndNothingBackwardsByDesign) {
    forEachSandwich([](Sandwich const& text) {
        string const lead = text.character.substr(0, 1);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 1), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 2), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, 3), text.after);
        EXPECT_EQ(indexOfAnyBut(text.owned, lead, text.after + 1), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, lead, farEnd), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, lead, 1), 0U);
    });
}

TEST(MultiByteSet, AnyButOneByteSkipsThatByteOnly) {
    forEachSandwich([](Sandwich const& text) {
        EXPECT_EQ(indexOfAnyBut(text.owned, "a", 1), 2U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "b", 1), 1U);
        EXPECT_EQ(indexOfAnyBut(text.owned, "b", 3), 0U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "b", farEnd), 2U);
        EXPECT_EQ(lastIndexOfAnyBut(text.owned, "a", 1), 0U);
    });
}

TEST(MultiByteSet, NulIsAMemberLikeAnyOther) {
    string const two = mb::samples().two.bytes;
    Owned const text = mb::buffer(string("\0\0", 2) + two + string("\0", 1));
    string const nul(1, '\0');
    EXPECT_EQ(indexOfAnyOf(text, nul, 3), 5U);
    EXPECT_EQ(indexOfAnyBut(text, nul, 1), 3U);
    EXPECT_EQ(lastIndexOfAnyBut(text, nul, farEnd), 3U);
    EXPECT_EQ(lastIndexOfAnyOf(text, nul, 4), 2U);
    EXPECT_EQ(indexOfAnyBut(text, nul + two, 1), 0U);
    EXPECT_EQ(lastIndexOfAnyOf(text, nul + "x", farEnd), 5U);
}

TEST(MultiByteSet, BytesThatAreNoCharacterAreMembersOfTheirOwn) {
    string const bad = mb::samples().invalid;
    Owned const text = mb::buffer("a" + bad + "b" + bad);
    EXPECT_EQ(indexOfAnyOf(text, bad, 1), 2U);
    EXPECT_EQ(indexOfAnyOf(text, "x" + bad, 3), 4U);
    EXPECT_EQ(lastIndexOfAnyOf(text, bad + "x", farEnd), 4U);
    EXPECT_EQ(indexOfAnyBut(text, "ab" + bad, 1), 0U);
    EXPECT_EQ(lastIndexOfAnyBut(text, bad + bad, farEnd), 3U);
}

TEST(MultiByteSet, TruncatedCharacterAtTheEndOfASetIsReadNoFurther) {
    string const lead = mb::samples().lead;
    mb::AtMemoryEnd const set("x" + lead);
    Owned const text = mb::buffer("a" + lead);
    EXPECT_EQ(text->indexOfAnyOf(set.data(), mb::lengthOf(lead) + 1, 1), 2U);
    EXPECT_EQ(text->lastIndexOfAnyBut(set.data(), mb::lengthOf(lead) + 1, farEnd), 1U);
    mb::AtMemoryEnd const one(lead.substr(0, 1));
    EXPECT_EQ(text->indexOfAnyBut(one.data(), 1, 1), 1U);
}

TEST(MultiByteSet, FirstCharacterOutsideIsFoundAfterMembersOfAnyNumber) {
    std::mt19937 random(20268);
    std::vector<string> members = {"a", "b"};
    for (mb::Sample const& sample : mb::samples().longCharacters())
        members.push_back(sample.bytes);
    string const out = members.back(); // a character of several bytes that is left out
    std::erase(members, out);
    string set;
    for (string const& member : members)
        set += member;
    for (int round = 0; round < 4000; ++round) {
        string text;
        for (auto n = random() % (round % 2 == 0 ? 8 : 400); n > 0; --n)
            text += members[random() % members.size()];
        string const outside = round % 3 == 0 ? "!" : round % 3 == 1 ? out : mb::samples().invalid + "!";
        EXPECT_EQ(indexOfAnyBut(mb::buffer(text), set, 1), 0U);
        EXPECT_EQ(indexOfAnyBut(mb::buffer(text + outside + "ab"), set, 1), mb::lengthOf(text) + 1)
            << mb::hex(text);
    }
}

} // namespace
