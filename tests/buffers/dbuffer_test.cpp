// DBuffer: storage, the factory, sharing, removal, justification, substrings and the debug text.
// What buffers find, edit and classify is tested elsewhere.
#include "tests/buffers/buffer_support.h"

#include <clocale>
#include <cstdint>
#include <sstream>

namespace {

using namespace core;

constexpr unsigned int lengthLimit = 0xFFFFFFE7;

// New buffers

TEST(BufferMaking, APieceWithoutPointerIsThatManyPadCharacters) {
    Owned const made(DBuffer::defaultBuffer()->newBuffer(nullptr, 3, "ab", 2, nullptr, 0, '*'));
    EXPECT_EQ(textOf(made.get()), "***ab");
    EXPECT_EQ(made->refs, 1U);
    EXPECT_EQ(made->length, 5U);
}

TEST(BufferMaking, EveryPieceMayBeTextOrPads) {
    DBuffer const* const empty = DBuffer::defaultBuffer();
    for (int kinds = 0; kinds < 8; ++kinds) {
        auto const piece = [kinds](int bit, char const* text) { return (kinds & bit) != 0 ? text : nullptr; };
        std::string const expected = ((kinds & 1) != 0 ? "one"s : "..."s) +
                                     ((kinds & 2) != 0 ? "two22"s : "....."s) +
                                     ((kinds & 4) != 0 ? "3"s : "."s);
        Owned const made(empty->newBuffer(piece(1, "one"), 3, piece(2, "two22"), 5, piece(4, "3"), 1, '.'));
        EXPECT_EQ(textOf(made.get()), expected);
        EXPECT_EQ(made->contents()[9], '\0');
    }
}

TEST(BufferMaking, NulsAreCopiedLikeAnyByte) {
    Owned const made(DBuffer::defaultBuffer()->newBuffer("a\0b", 3, "\0", 1, "c\0", 2, '*'));
    EXPECT_EQ(textOf(made.get()), "a\0b\0c\0"s);
    EXPECT_EQ(made->contents()[6], '\0');
}

TEST(BufferMaking, NulMayBeThePadCharacter) {
    Owned const made(DBuffer::defaultBuffer()->newBuffer("a", 1, nullptr, 2, "b", 1, '\0'));
    EXPECT_EQ(textOf(made.get()), "a\0\0b"s);
}

TEST(BufferMaking, APieceOfNoLengthAddsNothing) {
    Owned const made(DBuffer::defaultBuffer()->newBuffer("ignored", 0, "ab", 2, nullptr, 0, '*'));
    EXPECT_EQ(textOf(made.get()), "ab");
}

TEST(BufferMaking, EveryByteValueIsKept) {
    std::string all;
    for (int i = 0; i < 256; ++i)
        all += static_cast<char>(i);
    Owned const made = defaultBuffer(all);
    EXPECT_EQ(textOf(made.get()), all);
}

TEST(BufferMaking, TheTextStandsBehindAHeaderOfSixteenBytes) {
    Owned const made = defaultBuffer("abc");
    EXPECT_EQ(made->contents(), reinterpret_cast<char*>(made.get()) + 16);
    EXPECT_EQ(DBuffer::fromContents(made->contents()), made.get());
}

TEST(BufferMaking, TheClassFollowsTheLocaleForAPlainReceiver) {
    Owned const plain = plainBuffer("abc");
    Owned const made(plain->newBuffer("x", 1));
    EXPECT_EQ(made->className(), defaultClass());
    Owned const fromDefault(DBuffer::defaultBuffer()->newBuffer("x", 1));
    EXPECT_EQ(fromDefault->className(), defaultClass());
}

TEST(BufferMaking, TheClassFollowsTheReceiverWhoseFactoryIsItsOwn) {
    Owned const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    Owned const made(host->newBuffer("wxyz", 4));
    EXPECT_STREQ(made->className(), "HostFactoryBuffer");
    EXPECT_EQ(textOf(made.get()), "wxyz");
    EXPECT_EQ(HostFactoryBuffer::lastAllocated, 4U);
}

TEST(BufferMaking, AnEmptyResultIsTheSharedEmptyBufferWithOneMoreReference) {
    DBuffer* const shared = DBuffer::defaultBuffer();
    unsigned int const before = shared->refs;
    Owned const text = defaultBuffer("abc");
    Owned const made(text->newBuffer("ignored", 0, nullptr, 0, nullptr, 0, '*'));
    EXPECT_EQ(made.get(), shared);
    EXPECT_EQ(shared->refs, before + 1);
    EXPECT_EQ(shared->length, 0U);
    EXPECT_EQ(shared->contents()[0], '\0');
}

TEST(BufferMaking, APlainReceiverGetsTheEmptyBufferOfItsClass) {
    DBuffer* const defaultEmpty = DBuffer::defaultBuffer();
    DBuffer* const expected = isMultiByte() ? DBuffer::nullDBuffer : defaultEmpty;
    ASSERT_NE(expected, nullptr);
    unsigned int const before = expected->refs;
    Owned const plain = plainBuffer("abc");
    Owned const made(plain->newBuffer(nullptr, 0));
    EXPECT_EQ(made.get(), expected);
    EXPECT_EQ(expected->refs, before + 1);
    EXPECT_STREQ(made->className(), "DBuffer");
}

TEST(BufferMaking, AReceiverOfAHostsClassGetsTheDefaultEmptyBuffer) {
    Owned const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    Owned const made(host->newBuffer(nullptr, 0));
    EXPECT_EQ(made.get(), DBuffer::nullBuffer);
}

// The factory

TEST(BufferAllocation, ANewBufferHasOneReferenceItsLengthAndANulBehindTheText) {
    for (unsigned int length : {1U, 7U, 8U, 100U, 1000U, 70000U}) {
        Owned const made(DBuffer::defaultBuffer()->allocate(length));
        EXPECT_EQ(made->refs, 1U);
        EXPECT_EQ(made->length, length);
        EXPECT_EQ(made->contents()[length], '\0');
        EXPECT_EQ(made->className(), defaultClass());
    }
}

TEST(BufferAllocation, AnEmptyBufferIsNewAndNotTheSharedOne) {
    Owned const made(DBuffer::defaultBuffer()->allocate(0));
    EXPECT_NE(made.get(), DBuffer::nullBuffer);
    EXPECT_EQ(made->refs, 1U);
    EXPECT_EQ(made->length, 0U);
    EXPECT_EQ(made->contents()[0], '\0');
}

TEST(BufferAllocation, TheLocaleIsAskedAtEachCall) {
    if (isMultiByte()) {
        Owned const plain = plainBuffer("abc");
        Owned const inMultiByte(plain->allocate(3));
        EXPECT_STREQ(inMultiByte->className(), "DDBCSBuffer");
        std::string const locale = std::setlocale(LC_ALL, nullptr);
        std::setlocale(LC_ALL, "C");
        Owned const inC(plain->allocate(3));
        EXPECT_STREQ(inC->className(), "DBuffer");
        Owned const likeMultiByte(inMultiByte->allocate(3));
        EXPECT_STREQ(likeMultiByte->className(), "DDBCSBuffer") << "a multi-byte buffer makes its like";
        std::setlocale(LC_ALL, locale.c_str());
    } else {
        Owned const made(DBuffer::defaultBuffer()->allocate(3));
        EXPECT_STREQ(made->className(), "DBuffer");
    }
}

TEST(BufferAllocation, LengthsFromTheLimitOnOverflow) {
    Owned const plain = plainBuffer("abc");
    for (unsigned int length : {lengthLimit, lengthLimit + 1, 0xFFFFFFFEU, 0xFFFFFFFFU}) {
        expectLengthOverflow([&] { (void)plain->allocate(length); });
        expectLengthOverflow([&] { (void)DBuffer::defaultBuffer()->allocate(length); });
    }
    EXPECT_EQ(textOf(plain.get()), "abc");
    EXPECT_EQ(plain->refs, 1U);
}

// Overflow

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

// Shared empty buffers

TEST(SharedEmptyBuffer, TheDefaultIsMadeOnceAndKeepsAReferenceOfItsOwn) {
    DBuffer* const shared = DBuffer::defaultBuffer();
    EXPECT_EQ(DBuffer::defaultBuffer(), shared);
    EXPECT_EQ(DBuffer::nullBuffer, shared);
    EXPECT_EQ(shared->className(), defaultClass());
    EXPECT_GE(shared->refs, 1U);
    unsigned int const before = shared->refs;
    (void)DBuffer::defaultBuffer();
    EXPECT_EQ(shared->refs, before) << "no reference is added";
}

TEST(SharedEmptyBuffer, APlainOneExistsOnlyWhereBuffersAreMultiByte) {
    (void)DBuffer::defaultBuffer();
    if (isMultiByte()) {
        ASSERT_NE(DBuffer::nullDBuffer, nullptr);
        EXPECT_STREQ(DBuffer::nullDBuffer->className(), "DBuffer");
        EXPECT_EQ(DBuffer::nullDBuffer->length, 0U);
        EXPECT_GE(DBuffer::nullDBuffer->refs, 1U);
        EXPECT_EQ(DBuffer::nullDBuffer->contents()[0], '\0');
    } else {
        EXPECT_EQ(DBuffer::nullDBuffer, nullptr);
    }
}

TEST(SharedEmptyBuffer, NullIsTheEmptyBufferThatSuitsTheReceiver) {
    DBuffer* const shared = DBuffer::defaultBuffer();
    Owned const plain = plainBuffer("abc");
    Owned const text = defaultBuffer("abc");
    Owned const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    DBuffer* const plainEmpty = isMultiByte() ? DBuffer::nullDBuffer : shared;
    unsigned int const sharedRefs = shared->refs;
    unsigned int const plainRefs = plainEmpty->refs;
    EXPECT_EQ(plain->null(), plainEmpty);
    EXPECT_EQ(text->null(), shared);
    EXPECT_EQ(host->null(), shared);
    EXPECT_EQ(shared->null(), shared);
    EXPECT_EQ(shared->refs, sharedRefs) << "no reference is added";
    EXPECT_EQ(plainEmpty->refs, plainRefs);
}

TEST(SharedEmptyBuffer, InitializeMakesAFreshOneThatTheCallerOwns) {
    DBuffer* const shared = DBuffer::defaultBuffer();
    DBuffer* const plainBefore = DBuffer::nullDBuffer;
    Owned kept;
    if (plainBefore != nullptr) {
        ++plainBefore->refs;
        kept = Owned(plainBefore);
    }
    Owned const made(DBuffer::initialize());
    EXPECT_NE(made.get(), shared);
    EXPECT_EQ(DBuffer::nullBuffer, shared) << "the shared one stays";
    EXPECT_EQ(made->refs, 1U);
    EXPECT_EQ(made->length, 0U);
    EXPECT_EQ(made->contents()[0], '\0');
    EXPECT_EQ(made->className(), defaultClass());
    if (isMultiByte()) {
        EXPECT_NE(DBuffer::nullDBuffer, plainBefore) << "a fresh plain one is made as well";
        EXPECT_STREQ(DBuffer::nullDBuffer->className(), "DBuffer");
        EXPECT_EQ(DBuffer::nullDBuffer->refs, 1U);
    } else {
        EXPECT_EQ(DBuffer::nullDBuffer, nullptr);
    }
}

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

// Substrings

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

TEST(BufferSubString, JustBehindTheEndIsEmpty) {
    Owned const plain = plainBuffer("abcd");
    Owned const made(plain->subString(5));
    EXPECT_EQ(made.get(), plain->null());
    Owned const empty = plainBuffer("");
    Owned const ofEmpty(empty->subString(0));
    EXPECT_EQ(ofEmpty.get(), empty->null());
}

TEST(BufferSubStringOddity, FurtherBehindTheEndRaisesTheOverflowFailure) {
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
