// Encodings in which some sequences of bytes give two wide characters, a letter and a mark that combines with
// it, while the C library holds back the letter by itself until it knows that no mark follows. Bytes are
// walked and edited as in other encodings; what converts would not bring such a sequence back, and refuses
// it.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

#include <climits>

namespace {

using mb::buffer;
using mb::lengthOf;
using mb::Owned;
using mb::SwitchAt;
using std::string;

string const pair = mb::samples().pair.bytes;
wchar_t const first = mb::samples().pair.value;
unsigned int const pairLength = lengthOf(pair);

constexpr int off = 0;
constexpr int on = 1;

/// A letter that the C library holds back when it is converted from wide, and its value.
mb::Sample const held = mb::localeModeIs("hkscs") ? mb::samples().narrow : mb::samples().two;

operations::Failure refused() { return mb::badSequence(mb::invalidLine); }

TEST(Pairs, AreWhatTheCLibraryGivesTwoWideCharactersFor) {
    std::mbstate_t state{};
    wchar_t value = 0;
    EXPECT_EQ(std::mbrtowc(&value, pair.data(), pair.size(), &state), 2u);
    EXPECT_EQ(value, first);
    EXPECT_FALSE(std::mbsinit(&state));
    char bytes[MB_LEN_MAX];
    state = {};
    EXPECT_EQ(std::wcrtomb(bytes, held.value, &state), 0u);
}

TEST(Pairs, AreOneCharacterOfBytes) {
    Owned const text = buffer("a" + pair + "bc");
    ASSERT_EQ(text->length, 5u);
    unsigned int const places[] = {0, 1, 2, 0, 0};
    for (unsigned int position = 1; position <= 5; ++position)
        EXPECT_EQ(text->charType(position), places[position - 1]) << position;
    EXPECT_EQ(mb::asMultiByte(text).prevCharLength(4), 2u);
    EXPECT_EQ(text->next(text->contents() + 1), text->contents() + 3);
    std::mbstate_t state{};
    EXPECT_EQ(DDBCSBuffer::charLength(pair.c_str(), &state), 2);
    EXPECT_TRUE(std::mbsinit(&state)) << "the next character begins anew";
    EXPECT_EQ(DDBCSBuffer::charLength("bc", &state), 1);
    EXPECT_TRUE(buffer(pair + pair)->isValidMBCS());
}

TEST(Pairs, HaveTheClassOfTheirFirstValue) {
    EXPECT_TRUE(buffer("a" + pair + "b")->isAlphabetic());
    EXPECT_FALSE(buffer(pair + "1")->isAlphabetic());
    EXPECT_EQ(buffer(pair)->isMBCS(), wcwidth(first) >= 2);
    EXPECT_EQ(buffer("a" + pair)->includesMBCS(), wcwidth(first) >= 2);
}

TEST(Pairs, AreSearchedForAndEditedAsBytesWithTheSwitchOff) {
    SwitchAt const at(off);
    Owned const text = buffer("a" + pair + "bA" + pair);
    EXPECT_EQ(text->indexOf(pair.data(), 2, 1), 2u);
    EXPECT_EQ(text->indexOf(pair.data(), 2, 3), 6u);
    EXPECT_EQ(text->lastIndexOf(pair.data(), 2, 9), 6u);
    EXPECT_EQ(text->indexOfAnyOf((pair + "b").data(), 3, 3), 4u);
    EXPECT_EQ(text->indexOfAnyBut(("a" + pair).data(), 3, 1), 4u);
    EXPECT_EQ(Owned(buffer("a" + pair + "b")->upperCase()).text(), "A" + pair + "B");
    EXPECT_EQ(Owned(text->reverse()).text(), pair + "Ab" + pair + "a");
    EXPECT_EQ(Owned(text->translate(pair.data(), 2, "x", 1, ' ')).text(), "axbAx");
    EXPECT_EQ(Owned(text->remove(2, 1)).text(), "a bA" + pair);
    EXPECT_EQ(Owned(text->leftJustify(2, '.')).text(), "a.");
    EXPECT_EQ(Owned(text->insert("-", 1, 2, ' ')).text(), "a-" + pair + "bA" + pair);
    EXPECT_EQ(Owned(text->subString(3, 3, '.')).text(), ".bA");
}

TEST(Pairs, AreRefusedWithTheSwitchOnAndTheTextStaysAsItWas) {
    SwitchAt const at(on);
    Owned const text = buffer(pair + "Abc");
    EXPECT_EQ(operations::failureOf([&] { Owned(text->upperCase()); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->lowerCase()); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->reverse()); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->translate("A", 1, "B", 1, ' ')); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->strip("c", 1, DStringEnum::both)); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->leftJustify(3, ' ')); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->center(3, ' ')); }), refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(text->insert("x", 1, 3, ' ')); }), refused());
    EXPECT_EQ(operations::failureOf([&] { (void)text->indexOfAnyOf(DStringTest(std::isdigit), 1); }),
              refused());
    EXPECT_EQ(operations::failureOf([&] { Owned(buffer("abc")->translate("a", 1, pair.data(), 2, ' ')); }),
              refused());
    EXPECT_EQ(text.text(), pair + "Abc");
    EXPECT_EQ(text->refs, 1u);
}

TEST(Pairs, AreCutAndCopiedWholeInBothStates) {
    for (int const state : {off, on}) {
        SwitchAt const at(state);
        Owned const text = buffer("a" + pair + "b");
        EXPECT_EQ(Owned(text->subString(1)).text(), "a" + pair + "b");
        EXPECT_EQ(Owned(text->subString(2)).text(), pair + "b");
        EXPECT_EQ(Owned(text->subString(3)).text(), " b");
        EXPECT_EQ(Owned(text->subString(1, 3, '.')).text(), "a" + pair);
        EXPECT_EQ(Owned(text->subString(1, 2, '.')).text(), "a.");
        EXPECT_EQ(Owned(text->subString(3, 3, '.')).text(), ".b.");
        EXPECT_EQ(Owned(text->overlayWith("-", 1, 4, ' ')).text(), "a" + pair + "-");
    }
}

TEST(Pairs, ThatDifferFromOthersAfterThemDoNotCollateEqual) {
    SwitchAt const at(on);
    auto const compared = [](string const& left, string const& right) {
        return buffer(left)->compare(right.data(), lengthOf(right));
    };
    EXPECT_EQ(compared(pair + "A", pair + "A"), 0);
    EXPECT_EQ(compared(pair + "A", pair + "B"), 2);
    EXPECT_EQ(compared(pair + "B", pair + "A"), 1);
    EXPECT_EQ(compared(held.bytes, pair), 2) << "the letter comes before the letter with a mark";
    EXPECT_EQ(compared(pair, held.bytes), 1);
    EXPECT_EQ(compared("a" + pair, "a" + pair + "b"), 2);
}

TEST(Pairs, CountAsOneCharacterWhereBytesAreWalked) {
    string const text = "a" + pair + "b";
    unsigned int const length = lengthOf(text);
    EXPECT_EQ(findCharNum(text.c_str(), length, 3), 2u);
    EXPECT_EQ(findCharNum(text.c_str(), length, 4), 3u);
    EXPECT_EQ(findBytePos(text.c_str(), length, 3), 4u);
    EXPECT_EQ(findCurPos(text.c_str(), length, 3), 2u);
    EXPECT_EQ(findNextPos(text.c_str(), length, 2), 4u);
    EXPECT_EQ(findNextCharNum(text.c_str(), length, 3), 3u);
}

TEST(Pairs, AreRefusedByTheConverters) {
    wchar_t wide[8] = {};
    string const text = "a" + pair + "b";
    EXPECT_EQ(operations::failureOf([&] { cvtMBS2WCS(text.data(), 4, wide); }), refused());
    EXPECT_EQ(operations::failureOf([&] { DWBuffer const made(text.c_str()); }), refused());
    wchar_t value = L'#';
    std::mbstate_t state{};
    EXPECT_EQ(operations::failureOf([&] { cvtMB2WC(pair.data(), pairLength, &value, &state); }), refused());
    EXPECT_EQ(value, L'#');
    EXPECT_TRUE(std::mbsinit(&state));
}

TEST(Pairs, ThatTheCallerHasHalfReadEndWithASecondCharacterOfNoBytes) {
    std::mbstate_t state{};
    wchar_t value = 0;
    ASSERT_EQ(std::mbrtowc(&value, pair.data(), pair.size(), &state), 2u);
    EXPECT_EQ(cvtMB2WC("b", 1, &value, &state), 0);
    EXPECT_TRUE(value == 0x304 || value == 0x309A);
    EXPECT_EQ(cvtMB2WC("b", 1, &value, &state), 1);
    EXPECT_EQ(value, L'b');
}

TEST(LettersThatAreHeldBack, ConvertToTheirOwnBytesWhateverFollows) {
    wchar_t const mark = mb::localeModeIs("hkscs") ? 0x304 : 0x309A;
    std::wstring const wide = {held.value, held.value, L'b', held.value};
    string const bytes = held.bytes + held.bytes + "b" + held.bytes;
    string out(bytes.size() + 2, '#');
    EXPECT_EQ(cvtWCS2MBS(wide.data(), 4, out.data(), lengthOf(out), 1, '.'), out.size());
    EXPECT_EQ(out, bytes + "..");
    EXPECT_EQ(cvtWCS2MBS(wide.data(), 4, out.data(), 3, 0, '.'), 2u) << "only whole characters";
    wchar_t const withMark[] = {held.value, mark};
    EXPECT_EQ(operations::failureOf([&] { cvtWCS2MBS(withMark, 2, out.data(), 4, 0, ' '); }),
              operations::invalidRequest(0, "dnlsutil", 880))
        << "the mark has no bytes of its own";
}

TEST(LettersThatAreHeldBack, AreEditedWithTheSwitchOn) {
    SwitchAt const at(on);
    Owned const text = buffer("a" + held.bytes + "b" + held.bytes);
    EXPECT_EQ(Owned(text->reverse()).text(), held.bytes + "b" + held.bytes + "a");
    EXPECT_EQ(Owned(text->upperCase()).text(), "A" + held.bytes + "B" + held.bytes);
    EXPECT_EQ(Owned(text->translate("b", 1, held.bytes.data(), lengthOf(held.bytes), ' ')).text(),
              "a" + held.bytes + held.bytes + held.bytes);
}

TEST(LettersThatAreHeldBack, KeepTheirBytesNextToAMarkThatWouldCombine) {
    if (mb::localeModeIs("hkscs")) return; // its marks have no bytes of their own
    SwitchAt const at(on);
    // Two tone letters, which one sequence stands for as well.
    string const tones = mb::localeModeIs("eucjisx0213") ? "\xAB\xE4\xAB\xE0" : "\x86\x84\x86\x80";
    EXPECT_EQ(Owned(buffer("a" + tones)->upperCase()).text(), "A" + tones);
    EXPECT_EQ(Owned(Owned(buffer(tones)->reverse())->reverse()).text(), tones);
}

TEST(EveryCharacter, ComesBackByteForByteOrIsRefused) {
    SwitchAt const at(on);
    unsigned int refusedOnes = 0;
    unsigned int changed = 0;
    for (int lead = 0x80; lead < 0x100; ++lead)
        for (int trail = 0; trail < 0x100; ++trail) {
            string const character{static_cast<char>(lead), static_cast<char>(trail)};
            if (mb::mbrlenOf(character.data(), 2) != 2) continue;
            mb::Conversion const conversion = mb::convertedWithPairs(character);
            Owned const text = buffer(character + character);
            string result;
            operations::Failure const failure =
                operations::failureOf([&] { result = Owned(text->translate("", 0, "", 0, ' ')).text(); });
            EXPECT_EQ(failure, conversion.isPair[0] ? refused() : mb::nothing()) << mb::hex(character);
            if (conversion.isPair[0])
                ++refusedOnes;
            else if (mb::bytesOf(conversion.wide[0]) == character && result != character + character)
                ++changed;
        }
    EXPECT_EQ(refusedOnes, mb::localeModeIs("hkscs") ? 4u : 25u);
    EXPECT_EQ(changed, 0u);
}

} // namespace
