// Appending to a string: what it adds, and when the text grows where it stands. This program counts
// allocations.
#include "tests/buffers/buffer_support.h"
#include "tests/support/failing_allocations.h"

#include <kelcl/detail/library_buffers.h>

#include <utility>

namespace {

using namespace support;

/// Appends 'x' until the text stands elsewhere, so that its block is new and has room after it.
void moveToNewBlock(DString& text) {
    char const* const before = text.c_str();
    while (text.c_str() == before)
        text += 'x';
}

/// The sole owner of a text that has room for more bytes after it.
DString withRoom() {
    DString text(nullptr, 1000, 'a');
    moveToNewBlock(text);
    return text;
}

TEST(StringAppend, HasRoomForAsManyBytesAsTheBlockLeavesUpToTheLongestText) {
    constexpr unsigned int limit = kelcl::lengthLimit;
    for (auto const& [from, to] : {std::pair{0U, 3000U}, {65000U, 66500U}, {limit - 200, limit}})
        for (unsigned int length = from; length < to; ++length)
            for (unsigned int count = 1; count < 40; ++count)
                ASSERT_EQ(kelcl::hasRoomFor(length, count), count <= kelcl::roomAfter(length))
                    << length << ' ' << count;
}

TEST(StringAppend, AddsTheBytesAfterTheText) {
    DString text("abc");
    EXPECT_EQ(&(text += "def"), &text);
    EXPECT_EQ(textOf(text), "abcdef");
    EXPECT_EQ(&(text += DString("g\0h"s)), &text);
    EXPECT_EQ(textOf(text), "abcdefg\0h"s);
    EXPECT_EQ(&(text += 'i'), &text);
    EXPECT_EQ(&(text += "j\0"s), &text);
    EXPECT_EQ(&(text += "\0k"sv), &text);
    EXPECT_EQ(textOf(text), "abcdefg\0hij\0\0k"s);
    EXPECT_EQ(text.c_str()[text.length()], '\0');
    EXPECT_EQ(refsOf(text), 1U);
    text += '\0';
    EXPECT_EQ(text.length(), 15U);
}

TEST(StringAppend, NothingLeavesTheBufferUntouched) {
    DString text("abc");
    DString const witness(text);
    char const* const none = nullptr;
    long const before = allocations.made;
    text += "";
    text += none;
    text += nullptr;
    text += DString();
    text += std::string_view();
    text += ""sv;
    EXPECT_EQ(allocations.made, before);
    EXPECT_EQ(text.c_str(), witness.c_str());
    EXPECT_EQ(refsOf(witness), 2U);
}

TEST(StringAppend, NothingToAnEmptyStringStaysOnTheSharedBuffer) {
    DString text;
    unsigned int const before = refsOf(text);
    text += "";
    text += DString();
    EXPECT_EQ(text.c_str(), DString::nullBuf());
    EXPECT_EQ(refsOf(text), before);
}

TEST(StringAppend, ToAnEmptyStringNeverWritesIntoTheSharedBuffer) {
    unsigned int const before = DBuffer::defaultBuffer()->refs;
    {
        DString text;
        text += "a";
        EXPECT_EQ(textOf(text), "a");
        EXPECT_NE(text.c_str(), DString::nullBuf());
        EXPECT_EQ(refsOf(text), 1U);
        EXPECT_EQ(bufferOf(text)->className(), defaultClass());
    }
    EXPECT_EQ(DBuffer::defaultBuffer()->length, 0U);
    EXPECT_EQ(*DString::nullBuf(), '\0');
    EXPECT_EQ(DBuffer::defaultBuffer()->refs, before);
    EXPECT_TRUE(DString().isEmpty());
}

TEST(StringAppend, EveryLengthFromEveryLengthGivesTheRightText) {
    std::string const source = [] {
        std::string bytes;
        for (int i = 0; i < 400; ++i)
            bytes += static_cast<char>('!' + i % 90);
        return bytes;
    }();
    for (unsigned int first = 0; first < 300; first += 7) {
        for (unsigned int second = 0; second < 300; second += 11) {
            DString text(source.data(), first);
            text += std::string_view(source).substr(0, second);
            text += 'Z';
            ASSERT_EQ(textOf(text), source.substr(0, first) + source.substr(0, second) + 'Z');
            ASSERT_EQ(text.c_str()[text.length()], '\0');
            ASSERT_EQ(bufferOf(text)->refs, 1U);
        }
    }
}

// In place

TEST(StringAppendInPlace, ASoleOwnerWithRoomAllocatesNothing) {
    DString text;
    for (int i = 0; i < 1000; ++i)
        text += 'x';
    moveToNewBlock(text);
    char const* const before = text.c_str();
    unsigned int const length = text.length();
    long const count = allocations.made;
    text += "12345678";
    EXPECT_EQ(allocations.made, count);
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(text.length(), length + 8);
    EXPECT_STREQ(text.c_str() + length, "12345678");
}

TEST(StringAppendInPlace, AMillionAppendsAllocateOnlyLogarithmicallyOften) {
    DString text;
    long const before = allocations.made;
    for (unsigned int i = 0; i < 1000000; ++i)
        text += static_cast<char>('a' + i % 26);
    EXPECT_LT(allocations.made - before, 120) << "steps of an eighth below 1 KB and of a quarter above";
    ASSERT_EQ(text.length(), 1000000U);
    unsigned int right = 0;
    for (char const* at = text.c_str(); right < 1000000 && at[right] == static_cast<char>('a' + right % 26);)
        ++right;
    EXPECT_EQ(right, 1000000U);
    long const atOneMillion = allocations.made;
    for (unsigned int i = 0; i < 1000000; ++i)
        text += "fifteen letters";
    EXPECT_EQ(text.length(), 16000000U);
    EXPECT_LT(allocations.made - atOneMillion, 24) << "four doublings";
}

TEST(StringAppendInPlace, BlocksGrowBySmallSteps) {
    DString text;
    long const before = allocations.made;
    for (int i = 0; i < 40; ++i)
        text += 'x';
    EXPECT_LE(allocations.made - before, 6);
    EXPECT_EQ(textOf(text), std::string(40, 'x'));
}

TEST(StringAppendInPlace, ASharedTextIsNeverDisturbed) {
    DString text = withRoom();
    std::string const before = textOf(text);
    DString const witness(text);
    text += 'y';
    EXPECT_NE(text.c_str(), witness.c_str());
    EXPECT_EQ(textOf(witness), before);
    EXPECT_EQ(witness.c_str()[witness.length()], '\0');
    EXPECT_EQ(textOf(text), before + 'y');
    EXPECT_EQ(refsOf(witness), 1U);
    EXPECT_EQ(refsOf(text), 1U);
    text += 'z';
    EXPECT_EQ(textOf(witness), before);
    EXPECT_EQ(textOf(text), before + "yz");
}

TEST(StringAppendInPlace, ATextHeldByABufferPointerIsShared) {
    DString text = withRoom();
    std::string const before = textOf(text);
    ++bufferOf(text)->refs;
    Owned const held(bufferOf(text));
    text += 'y';
    EXPECT_EQ(textOf(held.get()), before);
    EXPECT_EQ(textOf(text), before + 'y');
}

TEST(StringAppendInPlace, AfterTheOtherOwnerIsDestroyedTheTextGrowsInPlaceAgain) {
    DString text = withRoom();
    { DString const other(text); }
    char const* const before = text.c_str();
    text += 'y';
    EXPECT_EQ(text.c_str(), before);
}

// Arguments within the text

TEST(StringAppendOfItself, DoublesTheText) {
    for (unsigned int length : {1U, 3U, 40U, 127U, 128U, 1000U}) {
        DString text(nullptr, length, 'a');
        text += text;
        EXPECT_EQ(textOf(text), std::string(2 * length, 'a'));
        EXPECT_EQ(refsOf(text), 1U);
    }
}

TEST(StringAppendOfItself, WithRoomInTheBlock) {
    for (unsigned int small = 1; small < 5; ++small) {
        DString text(nullptr, 1000, 'a');
        moveToNewBlock(text);
        text += "wxyz";
        std::string const before = textOf(text);
        char const* const place = text.c_str();
        text += std::string_view(text.c_str() + text.length() - small, small);
        EXPECT_EQ(text.c_str(), place) << "there was room";
        EXPECT_EQ(textOf(text), before + before.substr(before.size() - small));
        EXPECT_EQ(text.c_str()[text.length()], '\0');
    }
}

TEST(StringAppendOfItself, ACharacterPointerReachesToTheOldEnd) {
    DString text(nullptr, 1000, 'a');
    moveToNewBlock(text);
    text += "tail";
    std::string const before = textOf(text);
    text += text.c_str() + text.length() - 4;
    EXPECT_EQ(textOf(text), before + "tail");
    DString small("abc");
    small += small.c_str();
    small += small.c_str() + 1;
    EXPECT_EQ(textOf(small), "abcabcbcabc");
}

TEST(StringAppendOfItself, OneOfItsElements) {
    DString text("abc");
    DString const& readable = text;
    for (int i = 0; i < 100; ++i)
        text += readable[1U];
    EXPECT_EQ(textOf(text), "abc" + std::string(100, 'a'));
}

TEST(StringAppendOfItself, TheTerminatingNulMayBeAPartOfIt) {
    DString text("abc");
    for (int i = 0; i < 20; ++i)
        text += std::string_view(text.c_str() + text.length() - 1, 2);
    std::string expected = "abc";
    for (int i = 0; i < 20; ++i)
        expected += expected.substr(expected.size() - 1) + '\0';
    EXPECT_EQ(textOf(text), expected);
}

TEST(StringAppendOfItself, WhileShared) {
    DString text("abc");
    DString const witness(text);
    text += text;
    EXPECT_EQ(textOf(text), "abcabc");
    EXPECT_EQ(textOf(witness), "abc");
    EXPECT_EQ(refsOf(witness), 1U);
}

} // namespace
