// Appending to a string: when the text grows where it stands, and when it must not. This program counts every
// allocation.
#include "tests/buffers/buffer_support.h"
#include "tests/support/failing_allocations.h"

#include <clocale>
#include <cstdlib>

namespace {

using namespace core;

constexpr unsigned int lengthLimit = 0xFFFFFFE7;

/// Appends 'x' until the text stands elsewhere, so that its block is new and has room behind it.
void moveToNewBlock(DString& text) {
    char const* const before = text.c_str();
    while (text.c_str() == before)
        text += 'x';
}

/// The sole owner of a text that has room for more bytes behind it.
DString withRoom() {
    DString text(nullptr, 1000, 'a');
    moveToNewBlock(text);
    return text;
}

TEST(StringAppend, AddsTheBytesBehindTheText) {
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

TEST(StringAppendInPlace, AfterTheOtherOwnerWentTheTextGrowsInPlaceAgain) {
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

TEST(StringAppendOfItself, TheNulBehindTheTextMayBeAPartOfIt) {
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

// Which buffers have room

/// A class of a host whose buffers look, when they go, whether anybody wrote behind their text.
template <class Base>
class Guarded : public Base {
public:
    using Base::Base;
    ~Guarded() override {
        ++gone;
        if (this->length != builtLength || !guardIsIntact(this, builtLength)) ++overwritten;
    }
    DBuffer* allocate(unsigned int size) const override { return Base::allocate(size); }

    static DBuffer* make(std::string_view text) {
        gone = 0;
        overwritten = 0;
        builtLength = static_cast<unsigned int>(text.size());
        return makeIn<Guarded>(text, guardSize);
    }

    inline static unsigned int builtLength = 0;
    inline static int gone = 0;
    inline static int overwritten = 0;
};

/// The same without a word about making buffers.
class GuardedAsInherited : public DBuffer {
public:
    using DBuffer::DBuffer;
    ~GuardedAsInherited() override {
        ++gone;
        if (length != builtLength || !guardIsIntact(this, builtLength)) ++overwritten;
    }
    static DBuffer* make(std::string_view text) {
        gone = 0;
        overwritten = 0;
        builtLength = static_cast<unsigned int>(text.size());
        return makeIn<GuardedAsInherited>(text, guardSize);
    }

    inline static unsigned int builtLength = 0;
    inline static int gone = 0;
    inline static int overwritten = 0;
};

template <class Host>
void expectNeverGrownInPlace() {
    for (unsigned int length : {1U, 3U, 5U, 20U, 100U, 129U, 1000U, 1025U}) {
        SCOPED_TRACE(length);
        std::string const before(length, 'a');
        DString text(Host::make(before));
        text += 'x';
        EXPECT_EQ(textOf(text), before + 'x');
        EXPECT_EQ(Host::gone, 1) << "the text moved to a new buffer";
        EXPECT_EQ(Host::overwritten, 0);
        text += "yz";
        EXPECT_EQ(textOf(text), before + "xyz");
    }
}

TEST(StringAppendToAHostsBuffer, OfAClassThatInheritsEverythingNeverGrowsInPlace) {
    expectNeverGrownInPlace<GuardedAsInherited>();
}

TEST(StringAppendToAHostsBuffer, OfAClassThatOverridesTheFactoryNeverGrowsInPlace) {
    expectNeverGrownInPlace<Guarded<DBuffer>>();
}

TEST(StringAppendToAHostsBuffer, OfAClassThatMakesItsOwnKindKeepsTheClass) {
    DString text(makeIn<HostFactoryBuffer>("abc", guardSize));
    for (unsigned int i = 0; i < 50; ++i) {
        text += 'x';
        ASSERT_STREQ(bufferOf(text)->className(), "HostFactoryBuffer");
        ASSERT_EQ(HostFactoryBuffer::lastAllocated, 4 + i) << "each text gets a buffer of its own";
        ASSERT_TRUE(guardIsIntact(bufferOf(text), text.length()));
    }
    EXPECT_EQ(textOf(text), "abc" + std::string(50, 'x'));
}

TEST(StringAppendToAPlainBuffer, GivesTheClassOfTheLocale) {
    DString text;
    {
        std::string const locale = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        Owned const plain = plainBuffer("");
        text = DString(plain->newBuffer("abc", 3));
        std::setlocale(LC_ALL, locale.c_str());
    }
    ASSERT_STREQ(bufferOf(text)->className(), "DBuffer");
    text += "d";
    EXPECT_EQ(bufferOf(text)->className(), defaultClass());
    EXPECT_EQ(textOf(text), "abcd");
}

TEST(StringAppendToAMultiByteBuffer, KeepsTheClassWhenTheLocaleIsSingleByteLater) {
    if (!isMultiByte()) {
        DString text("abc");
        text += "d";
        EXPECT_STREQ(bufferOf(text)->className(), "DBuffer");
        return;
    }
    std::string const locale = std::setlocale(LC_ALL, nullptr);
    DString text("abc");
    std::setlocale(LC_ALL, "C");
    for (int i = 0; i < 200; ++i) {
        text += 'x';
        EXPECT_STREQ(bufferOf(text)->className(), "DDBCSBuffer");
    }
    std::setlocale(LC_ALL, locale.c_str());
    EXPECT_EQ(textOf(text), "abc" + std::string(200, 'x'));
}

// The limit

/// Expects that appending `added` bytes to `claimed` ones overflows before a byte is looked at.
void expectAppendOverflows(unsigned int claimed, std::string const& added) {
    SCOPED_TRACE(testing::Message() << claimed << " and " << added.size());
    DString text("abc");
    DString const argument(added);
    DBuffer* const buffer = bufferOf(text);
    buffer->length = claimed;
    expectLengthOverflow([&] { text += argument; });
    expectLengthOverflow([&] { text += added; });
    expectLengthOverflow([&] { text += added.c_str(); });
    EXPECT_EQ(bufferOf(text), buffer);
    EXPECT_EQ(buffer->length, claimed);
    EXPECT_EQ(buffer->refs, 1U);
    buffer->length = 3;
    EXPECT_EQ(textOf(text), "abc");
}

TEST(StringAppendOverflow, BeginsWhereTheSumReachesTheLimit) {
    expectAppendOverflows(lengthLimit - 1, "x");
    expectAppendOverflows(lengthLimit - 1, "twenty-five bytes or more");
    expectAppendOverflows(lengthLimit - 5, "12345");
    expectAppendOverflows(lengthLimit - 5, std::string(100, 'x'));
    expectAppendOverflows(lengthLimit - 1000, std::string(1000, 'x'));
    expectAppendOverflows(lengthLimit - 1, std::string(70000, 'x'));
}

TEST(StringAppendOverflow, OfASharedTextLeavesAllOwnersAsTheyWere) {
    DString text("abc");
    DString const witness(text);
    DBuffer* const buffer = bufferOf(text);
    buffer->length = lengthLimit - 1;
    expectLengthOverflow([&] { text += "x"; });
    expectLengthOverflow([&] { text += text; });
    expectLengthOverflow([&] { text += 'x'; });
    buffer->length = 3;
    EXPECT_EQ(buffer->refs, 2U);
    EXPECT_EQ(text.c_str(), witness.c_str());
}

TEST(StringAppendOverflow, OfAStandardStringViewBeyond32BitsIsRaisedUnread) {
    char const one = 'x';
    DString text("abc");
    for (std::size_t const size :
         {(std::size_t{1} << 32) - 1, std::size_t{1} << 32, (std::size_t{1} << 32) + 1})
        expectLengthOverflow([&] { text += std::string_view(&one, size); });
    EXPECT_EQ(textOf(text), "abc");
}

} // namespace
