// strip of multi-byte text.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dstring.h>

#include <cctype>
#include <random>
#include <string>
#include <vector>

namespace {

using namespace editing;

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

TEST(MultiByteStrip, LeadByteAloneAsTheSetStripsTheEndToNothingByDesign) {
    SwitchAt const at(off);
    forEachCharacter([](string const& c, unsigned int) {
        string const lead = c.substr(0, 1);
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::leading), "a" + c);
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::trailing), "");
        EXPECT_EQ(strip("a" + c, lead, DStringEnum::both), "");
    });
}

/// Runs of blanks, short and long, with characters of the class that are not ASCII among them.
TEST(MultiByteStrip, OfWhiteSpaceIsWhatATestOfEachCharacterSays) {
    auto const asked = [](int c) { return tql_iswspace(c); };
    SwitchAt const at(on);
    std::mt19937 random(13);
    std::vector<string> const& parts = mb::wholeParts();
    std::vector<string> blanks = {" ", "\t", "\r\n", string(40, ' '), string(130, '\t')};
    if (mb::isUtf8()) blanks.insert(blanks.end(), {"\u3000", "\u2003 ", "\u00A0", "\u2029\t\u3000"});
    for (int turn = 0; turn < 600; ++turn) {
        string text;
        for (std::size_t n = random() % 4; n > 0; --n)
            text += blanks[random() % blanks.size()];
        for (std::size_t n = random() % 5; n > 0; --n)
            text += parts[random() % parts.size()];
        for (std::size_t n = random() % 4; n > 0; --n)
            text += blanks[random() % blanks.size()];
        DString stripped(text.data(), mb::lengthOf(text));
        stripped.strip();
        ASSERT_EQ(string(stripped.c_str(), stripped.length()), strip(text, asked, DStringEnum::both));
    }
}

TEST(MultiByteStrip, TestThatThrowsLeavesTheReceiver) {
    inBothStates([] {
        Owned const text = mb::buffer(" " + mb::samples().two.bytes);
        EXPECT_THROW(Owned(text->strip(DStringTest(throwsOut), DStringEnum::both)), int);
        EXPECT_EQ(text->refs, 1U);
        EXPECT_EQ(text.text(), " " + mb::samples().two.bytes);
    });
}

/// White space as the library's own class has it, asked for each character.
class AskedWhiteSpace : public DStringTest {
public:
    AskedWhiteSpace() : DStringTest(plainFunction + 1, nullptr) {}
    int test(int c) const override {
        if (c >= 0 && c <= 127) return c == ' ' || (c >= '\t' && c <= '\r') ? 1 : 0;
        return std::isspace(c) != 0 ? 1 : 0;
    }
};

TEST(MultiByteStrip, OfWhiteSpaceIsThatOfATestThatIsAskedForEachCharacter) {
    SwitchAt const at(off);
    std::mt19937 random(20267);
    std::vector<string> parts = mb::parts();
    for (int often = 0; often < 20; ++often)
        parts.insert(parts.end(), {" ", "\t", "\r\n", "a", "0", "@"});
    for (int round = 0; round < 20000; ++round) {
        string const text = mb::randomText(random, parts, round % 4 == 0 ? 100 : 8);
        Owned const owned = mb::buffer(text);
        DString const whiteSpace = DString(text).strip();
        Owned const asked(owned->strip(AskedWhiteSpace(), DStringEnum::both));
        ASSERT_EQ(string(whiteSpace.c_str(), whiteSpace.length()), asked.text()) << mb::hex(text);
    }
}

} // namespace
