// TCVN 5712: the C library reads each letter without writing it, and holds it back for an accent that may
// combine with it. Here each byte is a character by itself, so that texts come back byte for byte.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

namespace {

using mb::buffer;
using mb::Owned;
using std::string;

TEST(HeldBackLetters, AreReadButNotWrittenByTheCLibrary) {
    EXPECT_EQ(MB_CUR_MAX, 2u);
    std::mbstate_t state{};
    wchar_t value = L'#';
    EXPECT_EQ(std::mbrtowc(&value, "a", 1, &state), 1u);
    EXPECT_EQ(value, L'#');
    EXPECT_FALSE(std::mbsinit(&state));
}

TEST(HeldBackLetters, ConvertToTheirValues) {
    wchar_t value = L'#';
    std::mbstate_t state{};
    EXPECT_EQ(cvtMB2WC("a", 1, &value, &state), 1);
    EXPECT_EQ(value, L'a');
    EXPECT_TRUE(std::mbsinit(&state)) << "nothing is held back for the next one";
    EXPECT_EQ(cvtMB2WC("bc", 2, &value, &state), 1);
    EXPECT_EQ(value, L'b');
    wchar_t wide[] = L"####";
    EXPECT_EQ(cvtMBS2WCS("abc", 3, wide), 3u);
    EXPECT_EQ(std::wstring(wide), L"abc#");
    EXPECT_EQ(cvtMBS2WCS("a\xB3", 2, wide), 2u) << "an accent stays by itself";
    EXPECT_EQ(std::wstring(wide, 2), (std::wstring{L'a', 0x301}));
}

TEST(HeldBackLetters, AreCharactersOfOneByte) {
    Owned const text = buffer("ab\xB3\xB8z");
    for (unsigned int position = 1; position <= 5; ++position)
        EXPECT_EQ(text->charType(position), 0u) << position;
    EXPECT_EQ(findCharNum(text->contents(), 5, 4), 4u);
    EXPECT_EQ(findBytePos(text->contents(), 5, 4), 4u);
    EXPECT_EQ(text->indexOf("b", 1, 1), 2u);
    EXPECT_TRUE(buffer("abc")->isAlphabetic());
    EXPECT_FALSE(buffer("ab1")->isAlphabetic());
}

TEST(HeldBackLetters, AreEditedInBothStates) {
    for (int const state : {0, 1}) {
        mb::SwitchAt const at(state);
        EXPECT_EQ(Owned(buffer("abcd")->upperCase()).text(), "ABCD");
        EXPECT_EQ(Owned(buffer("abcd")->reverse()).text(), "dcba");
        EXPECT_EQ(Owned(buffer("ab\xB3")->reverse()).text(), "\xB3"
                                                             "ba");
        EXPECT_EQ(Owned(buffer("abcd")->subString(2)).text(), "bcd");
        EXPECT_EQ(Owned(buffer("abcd")->subString(2, 2, '.')).text(), "bc");
        EXPECT_EQ(Owned(buffer("abcd")->translate("bc", 2, "x", 1, '.')).text(), "ax.d");
    }
}

TEST(HeldBackLetters, DoNotCollateEqualToOthers) {
    mb::SwitchAt const on(1);
    EXPECT_EQ(buffer("ab")->compare("ab", 2), 0);
    EXPECT_EQ(buffer("a")->compare("b", 1), 2);
    EXPECT_EQ(buffer("ac")->compare("ab", 2), 1);
}

TEST(EveryByte, ComesBack) {
    mb::SwitchAt const on(1);
    for (int value = 1; value < 256; ++value) {
        string const bytes = {static_cast<char>(value), 'a', static_cast<char>(value)};
        EXPECT_EQ(Owned(buffer(bytes)->translate("", 0, "", 0, ' ')).text(), bytes) << value;
    }
}

} // namespace
