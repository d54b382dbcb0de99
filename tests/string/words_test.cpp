// Words: counted, cut out, located, measured, removed, joined, and searched for as phrases.
#include "tests/buffers/operation_support.h"

#include <string>

namespace {

using operations::bytes;
using operations::contentsOf;
using operations::failureOf;
using operations::fresh;
using operations::refsOf;

constexpr unsigned int maximum = 0xFFFFFFFF;

std::string edited(DString& text) { return contentsOf(text); }

std::string spaced(char const* text, unsigned int n, char c) {
    DString string(text);
    return edited(string.space(n, c));
}

std::string withoutWords(char const* text, unsigned int first, unsigned int count) {
    DString string(text);
    return edited(string.removeWords(first, count));
}

TEST(Words, AreCounted) {
    EXPECT_EQ(fresh("  alpha\tbeta  ").numWords(), 2u);
    EXPECT_EQ(fresh("alpha").numWords(), 1u);
    EXPECT_EQ(fresh("a b c d").numWords(), 4u);
    EXPECT_EQ(fresh("").numWords(), 0u);
    EXPECT_EQ(fresh(" \t\n\v\f\r ").numWords(), 0u);
}

TEST(Words, AreSeparatedByExactlySixBytes) {
    for (char const separator : {'\t', '\n', '\v', '\f', '\r', ' '})
        EXPECT_EQ(fresh(std::string("a") + separator + "b").numWords(), 2u);
    for (int c = 1; c < 128; ++c) {
        char const byte = static_cast<char>(c);
        if (std::strchr("\t\n\v\f\r ", c) != nullptr) continue;
        EXPECT_EQ(fresh(std::string("a") + byte + "b").numWords(), 1u) << "byte " << c;
    }
    EXPECT_EQ(fresh(bytes("a\0b")).numWords(), 1u) << "a NUL is part of a word";
    EXPECT_EQ(fresh(bytes("\0 \0")).numWords(), 2u);
}

TEST(Words, AreCutOut) {
    DString const text("  alpha\tbeta  ");
    EXPECT_EQ(contentsOf(text.word(1)), "alpha");
    EXPECT_EQ(contentsOf(text.word(2)), "beta");
    EXPECT_EQ(contentsOf(text.word(3)), "");
    EXPECT_EQ(contentsOf(text.word(maximum)), "");
    EXPECT_EQ(contentsOf(fresh("a").word(1)), "a");
    EXPECT_EQ(contentsOf(fresh("").word(1)), "");
    EXPECT_EQ(contentsOf(fresh("  ").word(1)), "");
    EXPECT_EQ(contentsOf(fresh(bytes("x a\0b y")).word(2)), bytes("a\0b"));
}

TEST(Words, NumberZeroIsTheFirstWordForWordAndWords) {
    DString const text("  alpha\tbeta  ");
    EXPECT_EQ(contentsOf(text.word(0)), "alpha");
    EXPECT_EQ(contentsOf(text.words(0, 1)), "alpha");
    EXPECT_EQ(contentsOf(text.words(0, 2)), "alpha\tbeta");
}

TEST(Words, AreCutOutWithTheSeparatorsBetweenThem) {
    DString const text("  a  b  c ");
    EXPECT_EQ(contentsOf(text.words(1, 2)), "a  b");
    EXPECT_EQ(contentsOf(text.words(2, 2)), "b  c");
    EXPECT_EQ(contentsOf(text.words(2, 1)), "b");
    EXPECT_EQ(contentsOf(text.words(2)), "b");
    EXPECT_EQ(contentsOf(text.words(3, 1)), "c");
    EXPECT_EQ(contentsOf(text.words(1, 3)), "a  b  c");
    EXPECT_EQ(contentsOf(text.words(2, 0)), "");
    EXPECT_EQ(contentsOf(text.words(4, 1)), "");
    EXPECT_EQ(contentsOf(text.words(4, 0)), "");
    EXPECT_EQ(contentsOf(fresh("").words(1, 1)), "");
}

TEST(Words, BeyondTheLastAreNotMissed) {
    DString const text("  a  b  c ");
    EXPECT_EQ(contentsOf(text.words(2, 3)), "b  c");
    EXPECT_EQ(contentsOf(text.words(2, maximum)), "b  c");
    EXPECT_EQ(contentsOf(text.words(1, maximum)), "a  b  c");
    EXPECT_EQ(contentsOf(text.words(maximum, maximum)), "");
    EXPECT_EQ(contentsOf(text.words(maximum, 1)), "");
    EXPECT_EQ(contentsOf(fresh("a b").words(2, 7)), "b");
}

TEST(Words, AreLocated) {
    DString const text("  alpha\tbeta  ");
    EXPECT_EQ(text.indexOfWord(1), 3u);
    EXPECT_EQ(text.indexOfWord(2), 9u);
    EXPECT_EQ(text.indexOfWord(3), 0u);
    EXPECT_EQ(fresh("").indexOfWord(1), 0u);
    EXPECT_EQ(fresh("a").indexOfWord(1), 1u);
}

TEST(Words, AreLocatedFromAPositionWithWordsTakenAsSeen) {
    DString const text("ab cd ef");
    EXPECT_EQ(text.indexOfWord(1, 3, 0), 4u);
    EXPECT_EQ(text.indexOfWord(1, 2, 0), 2u) << "the rest of a word counts as a word";
    EXPECT_EQ(text.indexOfWord(2, 4, 1), 4u);
    EXPECT_EQ(text.indexOfWord(3, 4, 1), 7u);
    EXPECT_EQ(text.indexOfWord(1, 4, 1), 0u) << "the counter has passed it";
    EXPECT_EQ(text.indexOfWord(1, 9, 0), 0u);
    EXPECT_EQ(text.indexOfWord(1, maximum, 0), 0u);
}

TEST(Words, AreNotLocatedFromPositionZero) {
    EXPECT_EQ(fresh("a b").indexOfWord(1, 0, 0), 0u);
    EXPECT_EQ(fresh("a b").indexOfWord(2, 0, 1), 0u);
}

TEST(Words, NumberZeroIsNoWordForIndexAndLength) {
    EXPECT_EQ(fresh("a b").indexOfWord(0), 0u);
    EXPECT_EQ(fresh("a b").indexOfWord(0, 1, 0), 0u);
    EXPECT_EQ(fresh("a b").lengthOfWord(0), 0u);
}

TEST(Words, AreMeasured) {
    DString const text("  alpha\tbeta  ");
    EXPECT_EQ(text.lengthOfWord(1), 5u);
    EXPECT_EQ(text.lengthOfWord(2), 4u);
    EXPECT_EQ(text.lengthOfWord(3), 0u);
    EXPECT_EQ(fresh("a bcd").lengthOfWord(2), 3u);
    EXPECT_EQ(fresh("").lengthOfWord(1), 0u);
}

TEST(RemoveWords, TakesTheSeparatorsAfterTheWordsAlong) {
    EXPECT_EQ(withoutWords("a b  c", 2, 1), "a c");
    EXPECT_EQ(withoutWords("a b  c", 1, 1), "b  c");
    EXPECT_EQ(withoutWords("  a b  c", 1, 2), "  c");
    EXPECT_EQ(withoutWords("a b c d", 2, 2), "a d");
}

TEST(RemoveWords, OfTheLastWordsLeavesTheSeparatorsBeforeThem) {
    EXPECT_EQ(withoutWords("a b c  ", 2, 5), "a ");
    EXPECT_EQ(withoutWords("a b c  ", 2, 2), "a ");
    EXPECT_EQ(withoutWords("a  b", 2, 1), "a  ");
    EXPECT_EQ(withoutWords("  a  ", 1, 1), "  ");
    EXPECT_EQ(withoutWords("a b c", 1, 3), "");
    EXPECT_EQ(withoutWords("a b c  ", 2, maximum), "a ");
    EXPECT_EQ(withoutWords("a b c  ", 1, maximum), "");
    EXPECT_EQ(withoutWords("a b c  ", 3, maximum - 2), "a b ");
}

TEST(RemoveWords, OfNoWordChangesNothing) {
    for (unsigned int const first : {0u, 1u, 2u, 9u, maximum}) {
        DString text("a b");
        DString const copy(text);
        text.removeWords(first, 0);
        EXPECT_EQ(text.data(), copy.data());
    }
    for (unsigned int const first : {0u, 3u, maximum}) {
        DString text("a b");
        DString const copy(text);
        text.removeWords(first, 1);
        EXPECT_EQ(text.data(), copy.data());
        EXPECT_EQ(refsOf(text), 2u);
    }
    EXPECT_EQ(withoutWords("", 1, 1), "");
    EXPECT_EQ(withoutWords("  ", 1, 1), "  ");
}

TEST(RemoveWords, RemovesOneWordUnlessToldOtherwiseAndLeavesCopiesAlone) {
    DString text("a b c");
    DString const copy(text);
    DString& returned = text.removeWords(2);
    EXPECT_EQ(&returned, &text);
    EXPECT_EQ(contentsOf(text), "a c");
    EXPECT_EQ(contentsOf(copy), "a b c");
}

TEST(Space, JoinsTheWordsByExactlyAsManyFillCharacters) {
    EXPECT_EQ(spaced("  a \t b\n", 1, ' '), "a b");
    EXPECT_EQ(spaced("  a \t b\n", 0, 'x'), "ab");
    EXPECT_EQ(spaced("  a \t b\n", 2, '-'), "a--b");
    EXPECT_EQ(spaced("one two  three", 3, '.'), "one...two...three");
    EXPECT_EQ(spaced(" word ", 9, '-'), "word");
    EXPECT_EQ(spaced("a b", 1, '\t'), "a\tb");
    DString byDefault(" a  b ");
    EXPECT_EQ(edited(byDefault.space()), "a b");
    DString withNuls(std::string_view("a b", 3));
    EXPECT_EQ(edited(withNuls.space(2, '\0')), bytes("a\0\0b"));
}

TEST(Space, OfNothingButSeparatorsGivesTheNullString) {
    EXPECT_EQ(spaced("   ", 1, ' '), "");
    EXPECT_EQ(spaced("\t\n", maximum, 'x'), "");
}

TEST(Space, LeavesAnEmptyStringEmpty) {
    DString text;
    char const* const data = text.data();
    text.space(1, ' ');
    EXPECT_EQ(text.length(), 0u);
    EXPECT_EQ(text.data(), data);
}

TEST(Space, AlwaysMakesANewBufferEvenOfATextThatHasThatForm) {
    for (char const* const form : {"a b", "word"}) {
        DString text(form);
        DString const copy(text);
        text.space(1, ' ');
        EXPECT_EQ(contentsOf(text), form);
        EXPECT_NE(text.data(), copy.data());
        EXPECT_EQ(refsOf(copy), 1u);
        EXPECT_EQ(refsOf(text), 1u);
    }
}

TEST(Space, ThatWouldBecomeTooLongFailsAndLeavesTheStringAlone) {
    for (unsigned int const n : {maximum, maximum - 1, maximum - 3, 0x7FFFFFFFu, 0x80000000u}) {
        DString text("a b c");
        DString const copy(text);
        EXPECT_EQ(failureOf([&] { text.space(n, '-'); }), operations::lengthOverflow()) << n;
        EXPECT_EQ(text.data(), copy.data());
        EXPECT_EQ(refsOf(text), 2u);
    }
    DString one(" word ");
    EXPECT_EQ(contentsOf(one.space(maximum, '-')), "word") << "one word needs no fill characters";
}

TEST(FindPhrase, ReportsTheWordNumberOrThePosition) {
    DString const text("a x b x");
    EXPECT_EQ(text.findPhrase("x", 3, DString::wordIndex), 4u);
    EXPECT_EQ(text.findPhrase("x", 3, DString::charIndex), 7u);
    EXPECT_EQ(text.findPhrase("x"), 2u);
    EXPECT_EQ(text.findPhrase("x", 1, DString::charIndex), 3u);
    EXPECT_EQ(text.findPhrase("x", 4), 4u);
    EXPECT_EQ(text.findPhrase("x", 5), 0u);
    EXPECT_EQ(text.findPhrase("x b"), 2u);
    EXPECT_EQ(text.findPhrase("b x", 1, DString::charIndex), 5u);
    EXPECT_EQ(text.findPhrase("y"), 0u);
    EXPECT_EQ(text.findPhrase("y", 1, DString::charIndex), 0u);
}

TEST(FindPhrase, TakesAnyOtherTypeForAWordNumber) {
    EXPECT_EQ(fresh("a x").findPhrase("x", 1, static_cast<DString::IndexType>(2)), 2u);
    EXPECT_EQ(fresh("a x").findPhrase("x", 1, static_cast<DString::IndexType>(99)), 2u);
}

TEST(FindPhrase, LooksOnlyAtWordsNotAtWhatSeparatesThem) {
    EXPECT_EQ(fresh("a  b").findPhrase("a b"), 1u);
    EXPECT_EQ(fresh("x a\t\nb y").findPhrase("  a b "), 2u);
}

TEST(FindPhrase, ComparesWholeWordsByteByByte) {
    EXPECT_EQ(fresh("abc ab").findPhrase("ab"), 2u);
    EXPECT_EQ(fresh("ab abc").findPhrase("abc"), 2u);
    EXPECT_EQ(fresh("AB ab").findPhrase("ab"), 2u);
    EXPECT_EQ(fresh(bytes("a\0c a\0b")).findPhrase(bytes("a\0b")), 2u);
    EXPECT_EQ(fresh("a b a c").findPhrase("a c"), 3u);
    EXPECT_EQ(fresh("a a b").findPhrase("a b"), 2u);
}

TEST(FindPhrase, DoesNotFindAPhraseLongerThanTheRemainingWords) {
    EXPECT_EQ(fresh("a b").findPhrase("a b c"), 0u);
    EXPECT_EQ(fresh("a b c").findPhrase("b c", 3), 0u);
    EXPECT_EQ(fresh("").findPhrase("a"), 0u);
    EXPECT_EQ(fresh("a b").findPhrase("a", 3), 0u);
}

TEST(FindPhrase, FindsTheFirstOfTextsWhoseWordsRepeat) {
    EXPECT_EQ(fresh("a a a b a a b").findPhrase("a a b"), 2u);
    EXPECT_EQ(fresh("a a a b a a b").findPhrase("a a b", 3), 5u);
    EXPECT_EQ(fresh("a b a b a c a b").findPhrase("a b a c"), 3u);
    EXPECT_EQ(fresh("ab ab abc ab ab ab").findPhrase("ab ab ab"), 4u);
    std::string many;
    for (int i = 0; i < 60'000; ++i)
        many += "a ";
    EXPECT_EQ(fresh(many + "b").findPhrase(many.substr(60'000) + "b"), 30'001u);
    EXPECT_EQ(fresh(many).findPhrase(many.substr(60'000) + "b"), 0u);
}

TEST(FindPhrase, StartsAtTheFirstWordByDesignWhenTheStartWrapsAround) {
    DString const text("a b c");
    EXPECT_EQ(text.findPhrase("a b", 0), 1u);
    EXPECT_EQ(text.findPhrase("b c", 0xFFFFFFFF), 2u);
    EXPECT_EQ(text.findPhrase("a", 0xFFFFFFFF), 0u);
    EXPECT_EQ(text.findPhrase("a b c", 0xFFFFFFFE), 1u);
    EXPECT_EQ(text.findPhrase("a b c", 0xFFFFFFFD), 0u);
}

TEST(FindPhrase, AnEmptyPhraseIsFoundAtTheStartWordAtOnce) {
    DString const text("a b");
    EXPECT_EQ(text.findPhrase("", 1), 1u);
    EXPECT_EQ(text.findPhrase("", 2), 2u);
    EXPECT_EQ(text.findPhrase("  ", 2), 2u);
    EXPECT_EQ(text.findPhrase("", 2, DString::charIndex), 3u);
    EXPECT_EQ(text.findPhrase("", 3), 3u) << "one after the last word still passes";
    EXPECT_EQ(text.findPhrase("", 3, DString::charIndex), 0u) << "but there is no such word";
    EXPECT_EQ(text.findPhrase("", 4), 0u);
    EXPECT_EQ(text.findPhrase("", maximum), 0u);
    EXPECT_EQ(fresh("").findPhrase("", 1), 1u);
    EXPECT_EQ(fresh("").findPhrase("", 1, DString::charIndex), 0u);
}

TEST(FindPhrase, AnEmptyPhraseIsNotFoundFromWordZeroBecauseTheCountWraps) {
    EXPECT_EQ(fresh("a b").findPhrase("", 0), 0u);
    EXPECT_EQ(fresh("").findPhrase("", 0), 0u);
}

TEST(FindPhrase, FromWordZeroGoesOnToTheFirstWord) {
    EXPECT_EQ(fresh("a b").findPhrase("a", 0), 1u);
    EXPECT_EQ(fresh("a b").findPhrase("b", 0), 2u);
    EXPECT_EQ(fresh("a b").findPhrase("b", 0, DString::charIndex), 3u);
    EXPECT_EQ(fresh("a b").findPhrase("c", 0), 0u);
}

TEST(FindPhrase, FromAStartWordNearTheLimitWrapsRoundToTheFirstWord) {
    EXPECT_EQ(fresh("a b").findPhrase("a b", maximum), 1u);
    EXPECT_EQ(fresh("a b c").findPhrase("b c", maximum), 2u);
    EXPECT_EQ(fresh("a b c").findPhrase("a b c", maximum - 1), 1u);
    EXPECT_EQ(fresh("a b c").findPhrase("a", maximum), 0u) << "no sum wraps with a phrase of one word";
    EXPECT_EQ(fresh("a b c").findPhrase("b c", maximum - 1), 0u);
    EXPECT_EQ(fresh("a b").findPhrase("a b c", maximum), 0u);
}

TEST(FindPhrase, FindsAStringInItself) {
    DString const text(" a  b c ");
    EXPECT_EQ(text.findPhrase(text), 1u);
    EXPECT_EQ(text.findPhrase(text, 2), 0u);
}

TEST(Words, AreManyWithoutBecomingSlow) {
    std::string text;
    std::string joined;
    for (int i = 0; i < 100000; ++i) {
        text += ' ';
        text += 'w';
        text += std::to_string(i % 977);
        text += " \t";
        if (i != 0) joined += '-';
        joined += 'w';
        joined += std::to_string(i % 977);
    }
    DString string(text);
    EXPECT_EQ(string.numWords(), 100000u);
    EXPECT_EQ(contentsOf(string.word(100000)), "w345");
    EXPECT_EQ(string.findPhrase("w975 w976 w0 w1", 99000), 99653u);
    EXPECT_EQ(string.findPhrase("w345 w346", 99900), 0u);
    EXPECT_EQ(contentsOf(string.words(1, 100000)).size(), text.size() - 3);
    EXPECT_EQ(contentsOf(string.space(1, '-')), joined);
    EXPECT_EQ(string.numWords(), 1u);
}

} // namespace
