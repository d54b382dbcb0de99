// remove and rightJustify of single-byte buffers.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

// Removal

/// The two kinds of receivers: a plain buffer, and one of the locale's class.
std::vector<Owned> receivers(std::string_view text) {
    std::vector<Owned> both;
    both.push_back(plainBuffer(text));
    both.push_back(defaultBuffer(text));
    return both;
}

struct Removal {
    std::string text;
    unsigned int start, count;
    std::string expected;
};

TEST(BufferRemoval, TakesOutUpToCountBytesFromStartOn) {
    Removal const removals[] = {
        {"abcd", 0, 2, "cd"},         {"abcd", 1, 2, "cd"},        {"abcd", 2, 2, "ad"},
        {"abcd", 3, 100, "ab"},       {"abcd", 4, 1, "abc"},       {"abcd", 4, 0xFFFFFFFF, "abc"},
        {"abcd", 2, 0xFFFFFFFF, "a"}, {"a\0b\0c"s, 2, 2, "a\0c"s}, {"a\0b\0c"s, 3, 1, "a\0\0c"s}};
    for (auto const& [text, start, count, expected] : removals) {
        SCOPED_TRACE(testing::Message() << start << ", " << count);
        for (Owned const& receiver : receivers(text)) {
            Owned const made(receiver->remove(start, count));
            EXPECT_EQ(textOf(made.get()), expected);
            EXPECT_NE(made.get(), receiver.get());
            EXPECT_EQ(made->refs, 1U);
            EXPECT_EQ(textOf(receiver.get()), text) << "the receiver is not changed";
            EXPECT_EQ(receiver->refs, 1U);
        }
    }
}

TEST(BufferRemoval, BeyondTheEndGivesTheReceiverWithOneMoreReference) {
    for (Owned const& receiver : receivers("abcd")) {
        for (unsigned int start : {5U, 6U, 0xFFFFFFFFU}) {
            Owned const same(receiver->remove(start, 1));
            EXPECT_EQ(same.get(), receiver.get());
            EXPECT_EQ(receiver->refs, 2U);
        }
        EXPECT_EQ(receiver->refs, 1U);
    }
}

TEST(BufferRemoval, FromAnEmptyTextGivesTheReceiver) {
    Owned const empty(DBuffer::defaultBuffer()->allocate(0));
    for (unsigned int start : {0U, 1U}) {
        Owned const same(empty->remove(start, 1));
        EXPECT_EQ(same.get(), empty.get());
        EXPECT_EQ(empty->refs, 2U);
    }
}

TEST(BufferRemovalOddity, ACountOfZeroStillMakesANewBufferWithTheSameText) {
    for (Owned const& receiver : receivers("abcd")) {
        Owned const made(receiver->remove(2, 0));
        EXPECT_NE(made.get(), receiver.get());
        EXPECT_EQ(textOf(made.get()), "abcd");
        EXPECT_EQ(made->refs, 1U);
        EXPECT_EQ(receiver->refs, 1U);
    }
}

TEST(BufferRemoval, OfEverythingGivesTheSharedEmptyBuffer) {
    for (Owned const& receiver : receivers("abcd")) {
        DBuffer* const empty = receiver->null();
        unsigned int const before = empty->refs;
        for (unsigned int start : {0U, 1U}) {
            Owned const made(receiver->remove(start, 4));
            EXPECT_EQ(made.get(), empty);
            EXPECT_EQ(empty->refs, before + 1);
        }
    }
}

// Justification

TEST(BufferRightJustification, PadsOrCutsOnTheLeft) {
    struct Case {
        unsigned int width;
        char pad;
        std::string expected;
    };
    Case const cases[] = {
        {6, '.', "..abcd"}, {5, '\0', "\0abcd"s}, {3, '.', "bcd"}, {2, '.', "cd"}, {1, '.', "d"}};
    for (auto const& [width, pad, expected] : cases) {
        for (Owned const& receiver : receivers("abcd")) {
            Owned const made(receiver->rightJustify(width, pad));
            EXPECT_EQ(textOf(made.get()), expected);
            EXPECT_EQ(made->refs, 1U);
            EXPECT_EQ(textOf(receiver.get()), "abcd");
        }
    }
}

TEST(BufferRightJustification, ToItsOwnWidthGivesTheReceiverWithOneMoreReference) {
    for (Owned const& receiver : receivers("abcd")) {
        Owned const same(receiver->rightJustify(4, '.'));
        EXPECT_EQ(same.get(), receiver.get());
        EXPECT_EQ(receiver->refs, 2U);
    }
}

TEST(BufferRightJustification, ToNothingGivesTheSharedEmptyBuffer) {
    for (Owned const& receiver : receivers("abcd")) {
        Owned const made(receiver->rightJustify(0, '.'));
        EXPECT_EQ(made.get(), receiver->null());
    }
}

TEST(BufferRightJustification, OfAnEmptyTextIsAllPads) {
    for (Owned const& receiver : receivers("")) {
        Owned const made(receiver->rightJustify(3, '.'));
        EXPECT_EQ(textOf(made.get()), "...");
    }
}

TEST(BufferRightJustification, ToMoreThanATextCanBeOverflows) {
    Owned const plain = plainBuffer("abcd");
    for (unsigned int width : {lengthLimit, 0xFFFFFFFEU, 0xFFFFFFFFU})
        expectLengthOverflow([&] { (void)plain->rightJustify(width, '.'); });
    EXPECT_EQ(textOf(plain.get()), "abcd");
    EXPECT_EQ(plain->refs, 1U);
}

} // namespace
