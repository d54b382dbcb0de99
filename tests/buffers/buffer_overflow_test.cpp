// Buffers that would become too long.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

struct Lengths {
    unsigned int l1, l2, l3;
};

TEST(BufferOverflow, LengthsThatAddUpTo32BitsOfOnesNeverReachTheFactory) {
    Lengths const tooLong[] = {{0xFFFFFFFF, 0, 0},          {0, 0xFFFFFFFF, 0},           {0, 0, 0xFFFFFFFF},
                               {0xFFFFFFFE, 1, 0},          {1, 0xFFFFFFFE, 0},           {0xFFFFFFFE, 0, 1},
                               {0x7FFFFFFF, 0x80000000, 0}, {0x80000000, 0x80000000, 0},  {0xFFFFFFFF, 2, 5},
                               {0xFFFFFFFF, 0xFFFFFFFF, 3}, {0xFFFFFFF0, 0xE, 0xFFFFFFFF}};
    Owned const refusing(makeIn<RefusingBuffer>("abc", guardSize));
    for (auto const& [l1, l2, l3] : tooLong) {
        SCOPED_TRACE(testing::Message() << l1 << " + " << l2 << " + " << l3);
        expectLengthOverflow([&, a = l1, b = l2, c = l3] {
            (void)refusing->newBuffer(nullptr, a, nullptr, b, nullptr, c, ' ');
        });
    }
    EXPECT_EQ(textOf(refusing.get()), "abc");
    EXPECT_EQ(refusing->refs, 1U);
}

TEST(BufferOverflow, OneByteLessIsAskedOfTheFactory) {
    Owned const refusing(makeIn<RefusingBuffer>("abc", guardSize));
    for (Lengths const& each : {Lengths{0xFFFFFFFE, 0, 0}, Lengths{0xFFFFFFF0, 0xE, 0},
                                Lengths{0, 0xFFFFFFFD, 1}, Lengths{0x7FFFFFFF, 0x7FFFFFFF, 0}}) {
        try {
            (void)refusing->newBuffer(nullptr, each.l1, nullptr, each.l2, nullptr, each.l3, ' ');
            ADD_FAILURE() << "made";
        } catch (RefusingBuffer::Refused const& refused) {
            EXPECT_EQ(refused.length, 0xFFFFFFFEU);
        }
    }
}

TEST(BufferOverflow, TheFactoryRefusesInTurnWhatReachesItsLimit) {
    Owned const plain = plainBuffer("abc");
    for (unsigned int total : {lengthLimit, 0xFFFFFFFEU}) {
        expectLengthOverflow([&] { (void)plain->newBuffer(nullptr, total - 5, nullptr, 5); });
        expectLengthOverflow([&] {
            (void)DBuffer::defaultBuffer()->newBuffer(nullptr, 1, nullptr, 1, nullptr, total - 2, ' ');
        });
    }
}

TEST(BufferOverflow, OverflowItselfRaisesTheFailure) {
    Owned const plain = plainBuffer("abc");
    expectLengthOverflow([&] { plain->overflow(); });
    expectLengthOverflow([] { DBuffer::defaultBuffer()->overflow(); });
}

TEST(BufferOverflow, TheTextComesFromTheCatalogWhereThereIsOne) {
    std::string const before = DBase::messageFile();
    DBase::setMessageFile(KELCL_TEST_CATALOG_DIR "/kelcl.cat");
    expectLengthOverflow([] { (void)DBuffer::defaultBuffer()->allocate(lengthLimit); },
                         "The text would become longer than a string can be.");
    DBase::setMessageFile(before.c_str());
    expectLengthOverflow([] { (void)DBuffer::defaultBuffer()->allocate(lengthLimit); });
}

TEST(BufferOverflow, ItIsCaughtAsAnyExceptionOfTheLibrary) {
    ReportedFailures::installed();
    EXPECT_THROW((void)DBuffer::defaultBuffer()->allocate(lengthLimit), DException);
}

} // namespace
