// What buffers say of themselves, the constant answers of single-byte text, and the end of a buffer.
#include "tests/buffers/buffer_support.h"

#include <cstdint>
#include <sstream>

namespace {

using namespace support;

// Identity and the queries of single-byte text

TEST(BufferIdentity, BuffersOfOneClassAnswerWithTheSamePointer) {
    Owned const plain = plainBuffer("a");
    Owned const otherPlain = plainBuffer("bc");
    EXPECT_STREQ(plain->className(), "DBuffer");
    EXPECT_EQ(static_cast<void const*>(plain->className()),
              static_cast<void const*>(otherPlain->className()));
    Owned const text = defaultBuffer("a");
    EXPECT_EQ(static_cast<void const*>(text->className()),
              static_cast<void const*>(DBuffer::defaultBuffer()->className()));
    EXPECT_EQ(static_cast<void const*>(text->className()) == static_cast<void const*>(plain->className()),
              !isMultiByte());
}

TEST(SingleByteOddity, NextGivesTheSameAddressAsCallersRelyOn) {
    Owned const plain = plainBuffer("abc");
    char* const p = plain->contents() + 1;
    EXPECT_EQ(plain->next(p), p);
    char const* const constant = p;
    DBuffer const& receiver = *plain;
    EXPECT_EQ(receiver.next(constant), constant);
    EXPECT_EQ(plain->next(nullptr), nullptr);
}

TEST(SingleByteOddity, EveryPositionHasCharacterTypeZeroWithinTheTextAndBeyond) {
    Owned const plain = plainBuffer("\xE3\x81\x82");
    for (unsigned int position : {0U, 1U, 2U, 3U, 4U, 0xFFFFFFFFU})
        EXPECT_EQ(plain->charType(position), 0U);
}

TEST(SingleByteOddity, TheCharacterSetQueriesAreConstantEvenForAnEmptyText) {
    for (char const* text : {"", "abc", "\xE3\x81\x82"}) {
        Owned const plain = plainBuffer(text);
        EXPECT_TRUE(plain->isSBCS());
        EXPECT_FALSE(plain->isMBCS());
        EXPECT_FALSE(plain->isDBCS());
        EXPECT_TRUE(plain->isValidMBCS());
        EXPECT_TRUE(plain->isValidDBCS());
        EXPECT_TRUE(plain->includesSBCS());
        EXPECT_FALSE(plain->includesMBCS());
        EXPECT_FALSE(plain->includesDBCS());
    }
}

// Debug texts

std::string debugText(DBuffer const* buffer, std::string const& name, std::string const& data) {
    return name + "(@" + std::to_string(reinterpret_cast<std::uintptr_t>(buffer)) +
           ",refs=" + std::to_string(buffer->refs) + ",len=" + std::to_string(buffer->length) + ",data=[" +
           data + "])";
}

TEST(BufferDebugText, ShowsClassAddressReferencesLengthAndText) {
    Owned const plain = plainBuffer("hello");
    ++plain->refs;
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", "hello"));
    --plain->refs;
    Owned const text = defaultBuffer("hello");
    EXPECT_EQ(textOf(text->asDebugInfo()), debugText(text.get(), defaultClass(), "hello"));
}

TEST(BufferDebugText, OfAHostsClassShowsItsName) {
    Owned const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    EXPECT_EQ(textOf(host->asDebugInfo()), debugText(host.get(), "HostFactoryBuffer", "abc"));
}

TEST(BufferDebugText, ShowsTwentyThreeBytesWhole) {
    Owned const plain = plainBuffer("abcdefghijklmnopqrstuvw");
    ASSERT_EQ(plain->length, 23U);
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", "abcdefghijklmnopqrstuvw"));
}

TEST(BufferDebugText, OfTwentyFourBytesShowsTheFirstTenAndTheLastTen) {
    Owned const plain = plainBuffer("abcdefghijklmnopqrstuvwx");
    ASSERT_EQ(plain->length, 24U);
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", "abcdefghij...opqrstuvwx"));
}

TEST(BufferDebugText, OfThirtyBytesShowsTheFirstTenAndTheLastTen) {
    Owned const plain = plainBuffer("0123456789----------ABCDEFGHIJ");
    ASSERT_EQ(plain->length, 30U);
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", "0123456789...ABCDEFGHIJ"));
}

TEST(BufferDebugText, OfAShortTextStopsAtItsFirstNul) {
    Owned const plain = plainBuffer("ab\0cd"sv);
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", "ab"));
}

TEST(BufferDebugTextOddity, OfALongTextKeepsTheNulsOfBothEnds) {
    Owned const plain = plainBuffer("01\0003456789----------ABC\0EFGHI\0"sv);
    ASSERT_EQ(plain->length, 30U);
    EXPECT_EQ(textOf(plain->asDebugInfo()),
              debugText(plain.get(), "DBuffer", "01\0003456789...ABC\0EFGHI\0"s));
}

TEST(BufferDebugText, OfAnEmptyTextShowsNothingBetweenTheBrackets) {
    Owned const plain = plainBuffer("");
    EXPECT_EQ(textOf(plain->asDebugInfo()), debugText(plain.get(), "DBuffer", ""));
}

// Lifetime

TEST(BufferLifetime, TheLastReleaseRunsTheDestructorOfTheSubclass) {
    static int destroyed = 0;
    class Counted : public DBuffer {
    public:
        using DBuffer::DBuffer;
        ~Counted() override { ++destroyed; }
    };
    DString first(makeIn<Counted>("abc", guardSize));
    {
        DString const second(first);
        EXPECT_EQ(refsOf(first), 2U);
    }
    EXPECT_EQ(destroyed, 0);
    first = DString("other");
    EXPECT_EQ(destroyed, 1);
}

// As an object of the root classes

TEST(RootClasses, ABufferDoesNotOverrideAsString) {
    Owned const text = defaultBuffer("abc");
    EXPECT_EQ(textOf(text->asString()), "DVBase object");
}

TEST(RootClassesOddity, AnythingWrittenAsADBaseSaysThatItIsOne) {
    Owned const text = defaultBuffer("abc");
    std::ostringstream out;
    out << static_cast<DBase const&>(*text) << '|' << static_cast<DVBase const&>(*text);
    EXPECT_EQ(out.str(), "DBase object|DVBase object");
}

} // namespace
