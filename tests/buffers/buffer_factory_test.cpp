// Making buffers: from pieces, by the factory, of which class, and the shared empty ones.
#include "tests/buffers/buffer_support.h"

#include <clocale>

namespace {

using namespace support;

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

TEST(BufferMaking, TheTextStandsAfterAHeaderOfSixteenBytes) {
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

TEST(BufferAllocation, ANewBufferHasOneReferenceItsLengthAndATerminatingNul) {
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

} // namespace
