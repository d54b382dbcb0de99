// The bitwise operators: byte by byte, an operand that is repeated, and the length of the left operand.
#include "tests/buffers/operation_support.h"

namespace {

using operations::bytes;
using operations::contentsOf;
using operations::fresh;
using operations::refsOf;

class BitString : public DString {
public:
    using DString::applyBitOp;
    using DString::DString;
};

std::string applied(char const* text, std::string const& operand, DString::BitOperator op) {
    BitString string(text);
    EXPECT_EQ(&string.applyBitOp(operand.data(), operations::lengthOf(operand), op), &string);
    return contentsOf(string);
}

TEST(BitOperator, HasTheValuesThatHostsKnow) {
    EXPECT_EQ(DString::bitAnd, 0u);
    EXPECT_EQ(DString::bitOr, 1u);
    EXPECT_EQ(DString::bitExclusiveOr, 2u);
}

TEST(ApplyBitOp, CombinesByteByByte) {
    EXPECT_EQ(applied("abcd", "\x0F\x0F\x0F\x0F", DString::bitAnd), "\x01\x02\x03\x04");
    EXPECT_EQ(applied("ABCD", "    ", DString::bitOr), "abcd");
    EXPECT_EQ(applied("abcd", "ABAB", DString::bitExclusiveOr), bytes("\x20\x20\x22\x26"));
}

TEST(ApplyBitOp, CombinesEveryByteWithAnOperandOfOneByte) {
    EXPECT_EQ(applied("abc", "\xDF", DString::bitAnd), "ABC");
    EXPECT_EQ(applied("ABC", " ", DString::bitOr), "abc");
    EXPECT_EQ(applied("aBc", " ", DString::bitExclusiveOr), "AbC");
}

TEST(ApplyBitOp, RepeatsAShorterOperand) {
    EXPECT_EQ(applied("abcd", "AB", DString::bitExclusiveOr),
              applied("abcd", "ABAB", DString::bitExclusiveOr));
    EXPECT_EQ(applied("abcde", "AB", DString::bitExclusiveOr), bytes("\x20\x20\x22\x26\x24"));
    std::string text;
    for (int i = 0; i < 500; ++i)
        text += static_cast<char>(i * 7);
    for (std::size_t n = 1; n < 70; ++n) {
        std::string const operand = text.substr(3, n);
        std::string expected = text;
        for (std::size_t i = 0; i < text.size(); ++i)
            expected[i] = static_cast<char>(text[i] ^ operand[i % n]);
        DString string(text);
        EXPECT_EQ(contentsOf(string ^= operand), expected) << n;
    }
}

TEST(ApplyBitOp, UsesOfALongerOperandOnlyTheStringsLength) {
    EXPECT_EQ(applied("ab", "ABCDEF", DString::bitExclusiveOr), "  ");
    EXPECT_EQ(applied("a", "\x20zzz", DString::bitExclusiveOr), "A");
}

TEST(ApplyBitOp, WithAnyOtherOperatorLeavesTheBytesAsTheyAre) {
    EXPECT_EQ(applied("abc", "xyz", static_cast<DString::BitOperator>(3)), "abc");
    EXPECT_EQ(applied("abc", "x", static_cast<DString::BitOperator>(99)), "abc");
}

TEST(ApplyBitOp, WithAnyOtherOperatorMakesTheStringTheOnlyOwnerAllTheSame) {
    BitString text("abc");
    DString const copy(text);
    text.applyBitOp("xyz", 3, static_cast<DString::BitOperator>(7));
    EXPECT_NE(text.data(), copy.data());
    EXPECT_EQ(contentsOf(text), "abc");
}

TEST(ApplyBitOp, OfAnEmptyOperandDoesNotEvenMakeTheStringTheOnlyOwner) {
    BitString text("abc");
    DString const copy(text);
    text.applyBitOp("x", 0, DString::bitAnd);
    text.applyBitOp(nullptr, 0, DString::bitOr);
    text &= "";
    text |= nullptr;
    char const* const none = nullptr;
    text ^= none;
    text ^= DString();
    text &= std::string();
    EXPECT_EQ(text.data(), copy.data());
    EXPECT_EQ(refsOf(text), 2u);
    EXPECT_EQ(contentsOf(text), "abc");
}

TEST(ApplyBitOp, OnAnEmptyStringDoesNothing) {
    DString text;
    text ^= "abc";
    text |= "a";
    EXPECT_TRUE(text.isEmpty());
    EXPECT_EQ(DString().c_str()[0], '\0');
}

TEST(BitAssignment, TakesEveryKindOfText) {
    DString text("abc");
    EXPECT_EQ(&(text ^= " "), &text);
    EXPECT_EQ(contentsOf(text), "ABC");
    EXPECT_EQ(contentsOf(text |= DString(" ")), "abc");
    EXPECT_EQ(contentsOf(text &= std::string("\xDF")), "ABC");
    EXPECT_EQ(contentsOf(text |= std::string_view("xy ").substr(2)), "abc");
    EXPECT_EQ(contentsOf(text &= DString("\xDF\xFF")), "AbC");
    EXPECT_EQ(contentsOf(text &= "\xDF\xFF\xFF"), "AbC");
}

TEST(BitAssignment, CountsEmbeddedNulsInAllButACharacterPointer) {
    std::string const operand = bytes("\xFF\0\xFF");
    DString text("abc");
    EXPECT_EQ(contentsOf(text &= operand), bytes("a\0c"));
    DString other("abc");
    EXPECT_EQ(contentsOf(other &= operand.c_str()), "abc") << "up to the NUL there is one byte";
    DString third("abc");
    EXPECT_EQ(contentsOf(third &= DString(operand)), bytes("a\0c"));
}

TEST(BitAssignment, WorksInPlaceForASoleOwnerAndLeavesCopiesAlone) {
    DString text("abc");
    char const* const data = text.data();
    text ^= " ";
    EXPECT_EQ(text.data(), data);
    DString const copy(text);
    text |= " ";
    EXPECT_EQ(contentsOf(text), "abc");
    EXPECT_EQ(contentsOf(copy), "ABC");
    EXPECT_EQ(refsOf(copy), 1u);
}

TEST(BitAssignment, OfAStringWithItselfKeepsTheLength) {
    DString text("abcd");
    EXPECT_EQ(contentsOf(text ^= text), bytes("\0\0\0\0"));
    DString shared("abc");
    DString const copy(shared);
    EXPECT_EQ(contentsOf(shared ^= shared), bytes("\0\0\0"));
    EXPECT_EQ(contentsOf(copy), "abc");
    DString other("ab");
    EXPECT_EQ(contentsOf(other &= other), "ab");
    EXPECT_EQ(contentsOf(other |= other), "ab");
    DString one("a");
    EXPECT_EQ(contentsOf(one ^= one), bytes("\0"));
}

TEST(BitAssignment, WithAPartOfTheStringUsesThePartThatWasWhetherSharedOrNot) {
    for (std::size_t at = 0; at < 6; ++at) {
        for (std::size_t n = 1; at + n <= 6; ++n) {
            std::string const before = "qwerty";
            std::string expected = before;
            for (std::size_t i = 0; i < before.size(); ++i)
                expected[i] = static_cast<char>(before[i] ^ before[at + i % n]);
            DString shared(before);
            DString const copy(shared);
            shared ^= std::string_view(shared.data() + at, n);
            EXPECT_EQ(contentsOf(shared), expected) << at << ' ' << n;
            EXPECT_EQ(contentsOf(copy), before);
            DString text(before);
            text ^= std::string_view(text.data() + at, n);
            EXPECT_EQ(contentsOf(text), expected) << at << ' ' << n;
        }
    }
}

TEST(BitOperators, ReturnANewStringOfTheLengthOfTheLeftOperand) {
    DString const left("abcd");
    DString const right("AB");
    EXPECT_EQ(contentsOf(left ^ right), bytes("\x20\x20\x22\x26"));
    EXPECT_EQ(contentsOf(right ^ left), "  ");
    EXPECT_EQ(contentsOf(left & "\xDF"), "ABCD");
    EXPECT_EQ(contentsOf(right | " "), "ab");
    EXPECT_EQ(contentsOf(left ^ " "), "ABCD");
    EXPECT_EQ(contentsOf(left & right), bytes("\x41\x42\x41\x40"));
    EXPECT_EQ(contentsOf(left | right), "abcf");
    EXPECT_EQ(contentsOf(left), "abcd");
    EXPECT_EQ(contentsOf(right), "AB");
    EXPECT_EQ(refsOf(left), 1u);
}

TEST(BitOperators, WithTheTextOnTheLeftHaveTheLengthOfTheText) {
    DString const right("AB");
    EXPECT_EQ(contentsOf("abcd" ^ right), bytes("\x20\x20\x22\x26"));
    EXPECT_EQ(contentsOf("a" ^ right), " ");
    EXPECT_EQ(contentsOf("abc" & DString("\xDF")), "ABC");
    EXPECT_EQ(contentsOf("ABC" | DString(" ")), "abc");
    char const* const none = nullptr;
    EXPECT_EQ(contentsOf(none ^ right), "");
    EXPECT_EQ(contentsOf("abc" ^ DString()), "abc");
}

TEST(BitOperators, WithAnEmptyOperandShareTheText) {
    DString const text("abc");
    DString const result = text & "";
    EXPECT_EQ(result.data(), text.data());
    EXPECT_EQ(refsOf(text), 2u);
    EXPECT_EQ((text ^ DString()).data(), text.data());
}

TEST(Complement, TurnsEveryBitRound) {
    EXPECT_EQ(contentsOf(~fresh(bytes("\0\xFF\x0F"))), bytes("\xFF\0\xF0"));
    EXPECT_EQ(contentsOf(~fresh("A")), "\xBE");
    for (int c = 0; c < 256; ++c)
        EXPECT_EQ(contentsOf(~DString(static_cast<char>(c))), std::string(1, static_cast<char>(255 - c)));
}

TEST(Complement, TwiceGivesTheTextBackAndLeavesTheStringAlone) {
    std::string text;
    for (int i = 0; i < 300; ++i) {
        DString const string(text);
        EXPECT_EQ(contentsOf(~~string), text);
        EXPECT_EQ((~string).length(), text.size());
        EXPECT_EQ(contentsOf(string), text);
        text += static_cast<char>(i);
    }
    EXPECT_EQ((~DString()).data(), DString::nullBuf());
}

} // namespace
