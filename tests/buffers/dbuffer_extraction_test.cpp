// subString of single-byte buffers.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

TEST(BufferSubString, HasExactlyCountBytesPaddedWhereTheTextRunsOut) {
    struct Case {
        unsigned int start, count;
        std::string expected;
    };
    Case const cases[] = {{1, 4, "abcd"}, {0, 2, "ab"},  {2, 2, "bc"},    {3, 5, "cd..."},
                          {4, 1, "d"},    {5, 3, "..."}, {100, 2, ".."},  {0xFFFFFFFF, 1, "."},
                          {4, 2, "d."},   {1, 1, "a"},   {0, 5, "abcd."}, {2, 3, "bcd"}};
    Owned const plain = plainBuffer("abcd");
    for (auto const& [start, count, expected] : cases) {
        SCOPED_TRACE(testing::Message() << start << ", " << count);
        Owned const made(plain->subString(start, count, '.'));
        EXPECT_EQ(textOf(made.get()), expected);
        EXPECT_EQ(made->refs, 1U);
    }
    EXPECT_EQ(textOf(plain.get()), "abcd");
    EXPECT_EQ(plain->refs, 1U);
}

TEST(BufferSubString, TheWholeTextIsANewBuffer) {
    Owned const plain = plainBuffer("abcd");
    Owned const made(plain->subString(1));
    EXPECT_NE(made.get(), plain.get());
    EXPECT_EQ(textOf(made.get()), "abcd");
}

TEST(BufferSubString, OfNoBytesIsTheSharedEmptyBuffer) {
    Owned const plain = plainBuffer("abcd");
    for (unsigned int start : {0U, 2U, 5U, 77U}) {
        Owned const made(plain->subString(start, 0, '.'));
        EXPECT_EQ(made.get(), plain->null());
    }
}

TEST(BufferSubString, WithoutCountReachesToTheEnd) {
    Owned const plain = plainBuffer("ab\0d"sv);
    for (auto const& [start, expected] : std::vector<std::pair<unsigned int, std::string>>{
             {0, "ab\0d"s}, {1, "ab\0d"s}, {3, "\0d"s}, {4, "d"}}) {
        Owned const made(plain->subString(start));
        EXPECT_EQ(textOf(made.get()), expected);
    }
}

TEST(BufferSubString, JustPastTheEndIsEmpty) {
    Owned const plain = plainBuffer("abcd");
    Owned const made(plain->subString(5));
    EXPECT_EQ(made.get(), plain->null());
    Owned const empty = plainBuffer("");
    Owned const ofEmpty(empty->subString(0));
    EXPECT_EQ(ofEmpty.get(), empty->null());
}

TEST(BufferSubStringOddity, FurtherPastTheEndRaisesTheOverflowFailure) {
    Owned const plain = plainBuffer("abcd");
    for (unsigned int start : {6U, 7U, 30U, 31U, 1000U, 0x80000000U, 0xFFFFFFFEU, 0xFFFFFFFFU})
        expectLengthOverflow([&] { (void)plain->subString(start); });
    Owned const empty = plainBuffer("");
    expectLengthOverflow([&] { (void)empty->subString(2); });
    EXPECT_EQ(textOf(plain.get()), "abcd");
    EXPECT_EQ(plain->refs, 1U);
}

TEST(BufferSubString, OfMoreThanATextCanBeOverflows) {
    Owned const plain = plainBuffer("abcd");
    for (unsigned int count : {lengthLimit, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        expectLengthOverflow([&] { (void)plain->subString(1, count, '.'); });
        expectLengthOverflow([&] { (void)plain->subString(100, count, '.'); });
    }
}

TEST(BufferSubString, WithoutCountGoesThroughTheVirtualForm) {
    class Answering : public DBuffer {
    public:
        using DBuffer::DBuffer;
        using DBuffer::subString;
        DBuffer* subString(unsigned int start, unsigned int count, char pad) const override {
            std::string const call = std::to_string(start) + "," + std::to_string(count) + ",'" + pad + "'";
            return newBuffer(call.data(), static_cast<unsigned int>(call.size()));
        }
    };
    Owned const answering(makeIn<Answering>("abcd", guardSize));
    Owned const made(static_cast<DBuffer const&>(*answering).subString(2));
    EXPECT_EQ(textOf(made.get()), "2,3,' '");
    Owned const fromZero(static_cast<DBuffer const&>(*answering).subString(0));
    EXPECT_EQ(textOf(fromZero.get()), "1,4,' '");
}

} // namespace
