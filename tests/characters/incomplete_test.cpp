// Incomplete sequences inside a text: in the locales of this test MB_CUR_MAX is two, but the character set
// has characters of four bytes, so that the C library is never shown one of those at once.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dnlsutil.h>

namespace {

using mb::lengthOf;

std::string const longOne = mb::localeModeIs("shortutf8") ? "\xF0\xA0\x80\x80" : "\x95\x32\x82\x36";
constexpr wchar_t longValue = 0x20000;
std::string const text = "a" + longOne + "b";
unsigned int const length = lengthOf(text);

operations::Failure incomplete() {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", 760, 1, 1, ""};
}

using Positions = std::vector<unsigned int>;

/// What a function answers for every position of a text.
template <class Find>
Positions answers(Find find, std::string const& bytes) {
    Positions all;
    for (unsigned int position = 1; position <= bytes.size(); ++position)
        all.push_back(find(bytes.c_str(), lengthOf(bytes), position));
    return all;
}

TEST(IncompleteRuns, AriseInThisLocale) {
    EXPECT_EQ(MB_CUR_MAX, 2u);
    EXPECT_EQ(mb::mbrlenOf(longOne.data(), 2), mb::incompleteSequence);
    EXPECT_EQ(mb::mbrlenOf(longOne.data(), 4), 4u);
}

TEST(IncompleteRuns, AreOneCharacterWithTheOneThatClosesThem) {
    EXPECT_EQ(answers(findCharNum, text), (Positions{1, 2, 2, 2, 2, 3}));
    EXPECT_EQ(answers(findCurPos, text), (Positions{1, 2, 2, 2, 2, 6}));
    EXPECT_EQ(answers(findNextPos, text), (Positions{2, 6, 6, 6, 6, 0}));
    EXPECT_EQ(answers(findBytePos, text), (Positions{1, 2, 6, 0, 0, 0}));
}

TEST(IncompleteRuns, AreNotKeptAsTheStartOfACharacterByDesign) {
    EXPECT_EQ(answers(findNextCharNum, text), (Positions{1, 3, 3, 3, 3, 3}));
    EXPECT_EQ(findNextCharNum(longOne.c_str(), 4, 1), 1u) << "the front of the text is a start";
    std::string out(12, '#');
    EXPECT_EQ(getRemainString(text.c_str(), length, 2, '*', out.data()), 5u);
    EXPECT_EQ(out, "****b#######");
}

TEST(IncompleteRuns, ThatEndTheTextAreOneMoreCharacter) {
    std::string const cut = text.substr(0, 3);
    EXPECT_EQ(answers(findCharNum, cut), (Positions{1, 2, 2}));
    EXPECT_EQ(answers(findCurPos, cut), (Positions{1, 2, 2}));
    EXPECT_EQ(answers(findNextPos, cut), (Positions{2, 0, 0}));
    EXPECT_EQ(answers(findBytePos, cut), (Positions{1, 2, 0}));
}

TEST(IncompleteRuns, ConvertToTheCharacterThatClosesThem) {
    wchar_t wide[6] = {};
    ASSERT_EQ(cvtMBS2WCS(text.data(), length, wide), 3u);
    EXPECT_EQ(std::wstring(wide, 3), (std::wstring{L'a', longValue, L'b'}));
    std::string out(8, '#');
    EXPECT_EQ(cvtWCS2MBS(wide, 3, out.data(), 7, 1, '*'), 7u);
    EXPECT_EQ(out, text + "*#");
    DWBuffer const buffer(text.c_str());
    EXPECT_EQ(buffer.length, 3u);
    EXPECT_EQ(buffer.wide[1], longValue);
}

TEST(IncompleteRuns, AreCutAndCopiedWhole) {
    std::string out(8, '#');
    EXPECT_EQ(getRemainString(text.c_str(), length, 0, '*', out.data()), 6u);
    EXPECT_EQ(out, text + "##");
    out.assign(8, '#');
    getSubString(text.c_str(), length, 1, '*', out.data(), 4);
    EXPECT_EQ(out, "a***####");
    getSubString(text.c_str(), length, 1, '*', out.data(), 7);
    EXPECT_EQ(out, text + "*#");
    getSubString(text.c_str(), length, 4, '*', out.data(), 4);
    EXPECT_EQ(out.substr(0, 4), "**b*");
}

TEST(IncompleteRuns, ThatEndTheBytesGivenFailToConvert) {
    wchar_t wide[6] = {};
    for (unsigned int size = 2; size < 5; ++size)
        EXPECT_EQ(operations::failureOf([&] { cvtMBS2WCS(text.data(), size, wide); }), incomplete()) << size;
    std::mbstate_t state{};
    EXPECT_EQ(operations::failureOf([&] { cvtMB2WC(longOne.data(), 4, wide, &state); }), incomplete())
        << "no more than MB_CUR_MAX bytes are looked at";
    EXPECT_EQ(cvtMB2WC(longOne.data() + 2, 2, wide, &state), 2) << "the state goes on after those";
    EXPECT_EQ(wide[0], longValue);
}

TEST(IncompleteRuns, DoNotAriseInTheMultiByteBufferWhichLooksAtSixBytes) {
    operations::Owned const owned = mb::buffer(text);
    for (unsigned int place = 1; place <= 4; ++place)
        EXPECT_EQ(owned->charType(1 + place), place);
    EXPECT_EQ(mb::asMultiByte(owned).prevCharLength(6), 4u);
    EXPECT_TRUE(mb::buffer(longOne)->isValidMBCS());
    EXPECT_EQ(operations::Owned(owned->remove(2, 1)).text(), "a   b");
    EXPECT_EQ(operations::Owned(owned->rightJustify(3, '*')).text(), "**b");
}

} // namespace
