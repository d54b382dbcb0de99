// The operations of strings without memory: searching, editing, words.
#include "tests/allocation/sweep.h"

#include <gtest/gtest.h>

namespace {

using sweep::character;
using sweep::expectNoHarm;
using sweep::longText;

int isBlankOrWide(int c) { return c == ' ' || c > 127 || c < 0; }
DStringTest const test(isBlankOrWide);
int isQ(int c) { return c == 'Q'; }
DStringTest const rare(isQ);

volatile unsigned int sink;
void use(unsigned int value) { sink = value; }

TEST(WithoutMemory, SearchesDoNoHarm) {
    expectNoHarm({
        {"indexOf", [](DString& s) { use(s.indexOf(character()) + s.indexOf('1') + s.indexOf(test)); }},
        {"indexOfAnyOf", [](DString& s) { use(s.indexOfAnyOf(character() + "c1") + s.indexOfAnyOf(test)); }},
        {"indexOfAnyBut",
         [](DString& s) { use(s.indexOfAnyBut(character() + "ab ") + s.indexOfAnyBut(test)); }},
        {"lastIndexOf",
         [](DString& s) { use(s.lastIndexOf(character()) + s.lastIndexOf('1') + s.lastIndexOf(test)); }},
        {"lastIndexOfAnyOf",
         [](DString& s) { use(s.lastIndexOfAnyOf(character() + "a1") + s.lastIndexOfAnyOf(test)); }},
        {"lastIndexOfAnyBut",
         [](DString& s) { use(s.lastIndexOfAnyBut(character() + "c ") + s.lastIndexOfAnyBut(test)); }},
        {"includes",
         [](DString& s) { use(s.includes(character() + "c") + s.includes('z') + s.includes(test)); }},
        {"occurrencesOf",
         [](DString& s) {
             use(s.occurrencesOf(character()) + s.occurrencesOf('1') + s.occurrencesOf(rare));
         }},
    });
}

TEST(WithoutMemory, QueriesDoNoHarm) {
    expectNoHarm({
        {"comparisons", [](DString& s) { use((s == longText()) + (s < "ab") + ("b" > s) + (s != s)); }},
        {"isAbbrevFor", [](DString& s) { use(s.isAbbrevFor(longText(), 2)); }},
        {"isLike", [](DString& s) { use(s.isLike("*" + character() + "?*") + s.isLike("*z*")); }},
        {"classes",
         [](DString& s) {
             use(s.isAlphanumeric() + s.isAlphabetic() + s.isASCII() + s.isControl() + s.isDigits() +
                 s.isGraphics() + s.isHexDigits() + s.isLowerCase() + s.isPrintable() + s.isPunctuation() +
                 s.isUpperCase() + s.isWhiteSpace() + s.isBinaryDigits());
         }},
        {"kinds",
         [](DString& s) {
             use(s.isMBCS() + s.isDBCS() + s.isSBCS() + s.isValidMBCS() + s.isValidDBCS() + s.includesMBCS() +
                 s.includesDBCS() + s.includesSBCS() + s.charType(4));
         }},
        {"asDebugInfo", [](DString& s) { use(s.asDebugInfo().length()); }},
        {"subString", [](DString& s) { use(s.subString(4).length() + s.subString(2, 9).length()); }},
        {"subString of position 0", [](DString& s) { use(s.subString(0).length()); }},
    });
}

TEST(WithoutMemory, EditsInPlaceDoNoHarm) {
    expectNoHarm({
        {"upperCase", [](DString& s) { s.upperCase(); }},
        {"lowerCase", [](DString& s) { s.lowerCase(); }},
        {"reverse", [](DString& s) { s.reverse(); }},
        {"translate", [](DString& s) { s.translate("ab" + character(), character() + "x"); }},
        {"change to the same length", [](DString& s) { s.change("a", "z"); }},
        {"writing an element", [](DString& s) { s[2] = 'z'; }},
        {"prepareToChange", [](DString& s) { s.prepareToChange(); }},
        {"&=", [](DString& s) { s &= "\x7F"; }},
        {"|=", [](DString& s) { s |= s.subString(1); }},
        {"^=", [](DString& s) { s ^= std::string_view(s).substr(1, 2); }},
    });
}

TEST(WithoutMemory, EditsDoNoHarm) {
    expectNoHarm({
        {"strip", [](DString& s) { s.strip(); }},
        {"strip of a set", [](DString& s) { s.strip("ab c" + character(), DStringEnum::leading); }},
        {"strip by a test", [](DString& s) { s.strip(test, DStringEnum::trailing); }},
        {"overlayWith", [](DString& s) { s.overlayWith(character(), 5, '.'); }},
        {"overlayWith past the end", [](DString& s) { s.overlayWith("z", 2000, '.'); }},
        {"insert", [](DString& s) { s.insert(character(), 5); }},
        {"insert of a part of the text", [](DString& s) { s.insert(std::string_view(s).substr(0, 2), 5); }},
        {"leftJustify", [](DString& s) { s.leftJustify(5); }},
        {"rightJustify", [](DString& s) { s.rightJustify(2000); }},
        {"center", [](DString& s) { s.center(5); }},
        {"center wider", [](DString& s) { s.center(2000, '-'); }},
        {"copy", [](DString& s) { s.copy(3); }},
        {"change to a longer text", [](DString& s) { s.change(character(), "long"); }},
        {"change to a shorter text", [](DString& s) { s.change("ab ", ""); }},
        {"remove", [](DString& s) { s.remove(2, 3); }},
        {"remove to the end", [](DString& s) { s.remove(4); }},
        {"+=", [](DString& s) { s += longText(); }},
        {"+= of itself", [](DString& s) { s += s; }},
        {"writing past the end", [](DString& s) { s[2000] = 'x'; }},
    });
}

TEST(WithoutMemory, StaticEditsDoNoHarm) {
    expectNoHarm({
        {"upperCase of a copy", [](DString& s) { use(DString::upperCase(s).length()); }},
        {"center of a copy", [](DString& s) { use(DString::center(s, 99).length()); }},
        {"change of a copy", [](DString& s) { use(DString::change(s, "ab", "z", 1, 9).length()); }},
        {"change of a copy by strings",
         [](DString& s) { use(DString::change(s, DString("a"), DString(character()), 1, 9).length()); }},
        {"remove from a copy", [](DString& s) { use(DString::remove(s, 1, 2).length()); }},
        {"concatenation", [](DString& s) { use((character() + s + 'x' + s).length()); }},
        {"bit operators", [](DString& s) { use(((s & "a") | ("b" ^ ~s)).length()); }},
    });
}

TEST(WithoutMemory, WordOperationsDoNoHarm) {
    expectNoHarm({
        {"word",
         [](DString& s) { use(s.word(2).length() + s.numWords() + s.indexOfWord(2) + s.lengthOfWord(2)); }},
        {"words", [](DString& s) { use(s.words(1, 2).length()); }},
        {"findPhrase",
         [](DString& s) { use(s.findPhrase(DString(character() + " 12"), 1, DString::charIndex)); }},
        {"removeWords", [](DString& s) { s.removeWords(2); }},
        {"space", [](DString& s) { s.space(2, '-'); }},
    });
}

} // namespace
