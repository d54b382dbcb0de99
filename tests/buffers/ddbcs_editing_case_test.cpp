// upperCase and lowerCase of multi-byte text.
#include "tests/buffers/ddbcs_editing_support.h"
#include "tests/characters/multi_byte_support.h"

#include <cwctype>
#include <string>

namespace {

using namespace editing;
using operations::failureOf;
using operations::SharedWith;

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

TEST(MultiByteCase, WithTheSwitchOnLongRunsOfAsciiChangeAsTheirCharactersDo) {
    SwitchAt const at(on);
    string const small = mb::bytesOf(0x3B1);
    for (std::size_t const length : {1023U, 1024U, 1025U, 2048U, 5000U}) {
        string run;
        for (std::size_t i = 0; i < length; ++i)
            run += "The quick brown fox; I jump, 12 times.\n"[i % 39];
        string const text = run + small + small + run + small + run;
        string wantedUpper, wantedLower;
        for (string const& character : {run, small + small, run, small, run})
            for (std::size_t i = 0; i < character.size();) {
                bool const isAscii = static_cast<signed char>(character[i]) >= 0;
                wchar_t const value = isAscii ? static_cast<wchar_t>(character[i]) : 0x3B1;
                wantedUpper +=
                    mb::bytesOf(static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(value))));
                wantedLower +=
                    mb::bytesOf(static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(value))));
                i += isAscii ? 1 : small.size();
            }
        EXPECT_EQ(upper(text), wantedUpper) << length;
        EXPECT_EQ(lower(text), wantedLower) << length;
    }
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

} // namespace
